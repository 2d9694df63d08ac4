#include "creation/ide_handoff.h"

#include <gtest/gtest.h>

#include "model/expand.h"
#include "model/variables.h"

namespace tsaw::creation {
namespace {

// An IDE whose answers the test sets, recording what it was asked.
class FakeIde : public platform::Ide {
 public:
  class Conversation : public platform::DdeConversation {
   public:
    explicit Conversation(FakeIde& ide) : ide_(ide) {}
    void SetLink(const std::string& service, const std::string& topic) override {
      ide_.calls.push_back("link " + service + " " + topic);
    }
    void SetServiceApplication(const std::string& exe) override { ide_.calls.push_back("app " + exe); }
    bool OpenLink() override { return ide_.link_opens; }
    bool ExecuteMacro(const std::string& macro) override {
      ide_.calls.push_back("macro " + macro);
      return ide_.macro_runs;
    }
    void CloseLink() override { ide_.calls.push_back("close"); }

   private:
    FakeIde& ide_;
  };

  bool InsideIde() override { return inside; }
  std::unique_ptr<platform::DdeConversation> NewConversation() override {
    calls.push_back("new conversation");
    return std::make_unique<Conversation>(*this);
  }
  std::string ReadMachineRegistry(const std::string& key, const std::string& value) override {
    calls.push_back("registry " + key + " " + value);
    return "C:\\\\Delphi5\\\\Bin\\\\delphi32.exe";
  }
  bool RaiseWindow(const std::string& name) override {
    calls.push_back("raise " + name);
    return true;
  }
  void ShowMessage(platform::MessageKind kind, const std::string& text) override {
    calls.push_back(std::string(kind == platform::MessageKind::Error ? "error" : "info") + ":" + text);
  }

  bool inside = true;
  bool link_opens = true;
  bool macro_runs = true;
  std::vector<std::string> calls;
};

class IdeHandoffTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Init_Variables(wizard_);
    wizard_.Variables[viProjectsPrefix].Value = "Acme";
    wizard_.Variables[viProjectsPrefix].IdfValue = "Acme";
    wizard_.Targets[1].Checked = true;
  }
  std::vector<std::string> Open() {
    TRunObserver observer;
    OpenProjects(wizard_, "/out/Rocket", ide_, observer);
    return ide_.calls;
  }
  TWizard wizard_;
  FakeIde ide_;
};

const std::vector<std::string> kLinkCalls = {
    "new conversation", "link DELPHI32 system", "registry \\Software\\Borland\\Delphi\\5.0 App",
    "app C:\\Delphi5\\Bin\\delphi32.exe"};

TEST_F(IdeHandoffTest, OutsideTheIdeOnlyTells) {
  ide_.inside = false;
  EXPECT_EQ(Open(), std::vector<std::string>{"info: This feature is not available outside the IDE. "});
}

TEST_F(IdeHandoffTest, RefusesASetWithoutTheFirstTarget) {
  wizard_.Targets[1].Checked = false;
  EXPECT_EQ(Open(), std::vector<std::string>{
                        "error: This IDE language (Delphi 5 for Win32) has not been target by the project set created. "});
}

TEST_F(IdeHandoffTest, SaysWhenTheLinkCannotBeOpened) {
  ide_.link_opens = false;
  std::vector<std::string> expected = kLinkCalls;
  expected.push_back("error: DDE Conversation with the IDE could not be estabilished. ");
  EXPECT_EQ(Open(), expected);
}

TEST_F(IdeHandoffTest, OpensTheGroupAndRaisesTheHost) {
  std::vector<std::string> expected = kLinkCalls;
  expected.insert(expected.end(), {"macro [open(\"/out/Rocket/Acme D5 Win32.bpg\")]", "close",
                                   "raise TsaDesktop.frmMain"});
  EXPECT_EQ(Open(), expected);
}

TEST_F(IdeHandoffTest, SaysWhenTheMacroFails) {
  ide_.macro_runs = false;
  std::vector<std::string> expected = kLinkCalls;
  expected.insert(expected.end(), {"macro [open(\"/out/Rocket/Acme D5 Win32.bpg\")]",
                                   "error: DDE macro to the IDE failed to execute. ", "close"});
  EXPECT_EQ(Open(), expected);
}

TEST(IdeRegistryKeyTest, DerivesTheKeyFromTheShortName) {
  const std::pair<const char*, const char*> cases[] = {
      {"D5", "\\Software\\Borland\\Delphi\\5.0"}, {"D7", "\\Software\\Borland\\Delphi\\7.0"},
      {"D8", "\\Software\\Borland\\BDS\\2.0"},    {"D2005", "\\Software\\Borland\\BDS\\3.0"},
      {"D2006", "\\Software\\Borland\\BDS\\4.0"}, {"TD2006", "\\Software\\Borland\\BDS\\4.0"},
      {"D2007", "\\Software\\Borland\\BDS\\5.0"}, {"Chm", ""}};
  for (const auto& [name, key] : cases) EXPECT_EQ(IdeRegistryKey(name), key) << name;
}

}  // namespace
}  // namespace tsaw::creation
