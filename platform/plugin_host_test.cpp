#include "platform/plugin_host.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tsaw::platform {
namespace {

// A plug-in with one command "Open" taking "pamParent"; it records what its handler saw.
class TestPlugin : public TqrxTsa {
 public:
  TestPlugin() : TqrxTsa({"test", "Test", "1.0", TInstanceMode::SingleInstance}) {
    SetHandlers([](TqrxTsa&, TMethodResult&) { throw std::runtime_error("init broke"); }, nullptr);
    AddCommand("Open", {"pamParent"}, [this](TqrxTsa&, const TCommandParams& params, TMethodResult& result) {
      seen_code = result.Code;
      seen = params.front().Value;
      result.Code = smrOk;
    });
  }
  void* seen = nullptr;
  TMethodResultCode seen_code = smrOk;
};

TEST(PluginHostTest, CommandsRunOnlyWithTheirDeclaredNonNullParameters) {
  int window = 0;
  struct Case {
    const char* name;
    const char* command;
    TCommandParams params;
    TMethodResultCode code;
  } cases[] = {
      {"declared", "Open", {{"pamParent", &window}}, smrOk},
      {"unknown command", "Close", {{"pamParent", &window}}, smrUnexpectedError},
      {"missing parameter", "Open", {}, smrUnexpectedError},
      {"extra parameter", "Open", {{"pamParent", &window}, {"pamMore", &window}}, smrUnexpectedError},
      {"other name", "Open", {{"pamOwner", &window}}, smrUnexpectedError},
      {"null", "Open", {{"pamParent", nullptr}}, smrUnexpectedError},
  };
  for (const Case& c : cases) {
    TestPlugin plugin;
    const TMethodResult result = plugin.Execute(c.command, c.params);
    EXPECT_EQ(result.Code, c.code) << c.name;
    EXPECT_EQ(plugin.seen, c.code == smrOk ? &window : nullptr) << c.name;
    EXPECT_EQ(result.Message.empty(), c.code == smrOk) << c.name << ": " << result.Message;
  }
}

TEST(PluginHostTest, HandlersStartFromUnexpectedErrorAndExceptionsBecomeOne) {
  TestPlugin plugin;
  int window = 0;
  plugin.Execute("Open", {{"pamParent", &window}});
  EXPECT_EQ(plugin.seen_code, smrUnexpectedError);
  const TMethodResult init = plugin.Initialize();
  EXPECT_EQ(init.Code, smrUnexpectedError);
  EXPECT_EQ(init.Message, "init broke");
  EXPECT_EQ(plugin.Finalize().Code, smrOk);  // no handler
}

TEST(PluginHostTest, ExpandsTheFrameworkRoot) {
  TestPlugin plugin;
  plugin.AttachHost({"/srv/tessera", false});
  EXPECT_EQ(plugin.ExpandFrameworkNames("%RootPath%/TSA/Wizard/"), "/srv/tessera/TSA/Wizard/");
  EXPECT_EQ(plugin.ExpandFrameworkNames("%RootPath%%RootPath%"), "/srv/tessera/srv/tessera");
  EXPECT_EQ(plugin.ExpandFrameworkNames("%Other%"), "%Other%");
}

TEST(PluginHostTest, LoadingAMissingModuleSaysWhich) {
  std::string error;
  EXPECT_EQ(TPluginModule::Load("/nonexistent/TSaW.tsa", error), nullptr);
  EXPECT_NE(error.find("/nonexistent/TSaW.tsa"), std::string::npos) << error;
}

}  // namespace
}  // namespace tsaw::platform
