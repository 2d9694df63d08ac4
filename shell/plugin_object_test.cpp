#include "shell/plugin_object.h"

#include <gtest/gtest.h>

#include <QWidget>

#include <cstdlib>

#include "shell/main_frame.h"
#include "testing/fake_dialogs.h"
#include "testing/qt_application.h"
#include "testing/temp_dir.h"
#include "testing/wizard_root.h"

namespace tsaw {
namespace {

class PluginObjectTest : public ::testing::Test {
 protected:
  void SetUp() override {
    testing::WriteWizardRoot(root_);
    // The frames remember their place on closing: in the test's folder, not the user's.
    setenv("XDG_CONFIG_HOME", (root_.path() / "config").c_str(), 1);
  }

  std::unique_ptr<TtsaWizard> Make(platform::TInstanceMode mode = platform::TInstanceMode::SingleInstance) {
    auto plugin = std::make_unique<TtsaWizard>(std::make_unique<testing::FakeDialogs>(), mode);
    plugin->AttachHost({root_.path().string(), false});
    return plugin;
  }
  platform::TMethodResult OpenWindow(TtsaWizard& plugin) {
    return plugin.Execute(kOpenWindowCommand, {{kParentWindowParam, &host_}});
  }

  QApplication& app_ = testing::TestApplication();  // before any widget
  testing::TempDir root_;
  QWidget host_;
};

TEST_F(PluginObjectTest, PublishesItsSettings) {
  const auto plugin = Make();
  const platform::TPluginSettings& settings = plugin->Settings();
  EXPECT_EQ(settings.DeepName, "Tessera Wizard");
  EXPECT_EQ(settings.Version, "6.01");
  EXPECT_EQ(settings.Description,
            "Interactively generates source code for new plugins and (optionally) for its respective host application.");
  EXPECT_EQ(settings.InstanceMode, platform::TInstanceMode::SingleInstance);
}

TEST_F(PluginObjectTest, MultiInstanceObjectIsRefusedAtInitialisation) {
  auto plugin = Make(platform::TInstanceMode::MultiInstance);
  const platform::TMethodResult result = plugin->Initialize();
  EXPECT_EQ(result.Code, platform::smrUnexpectedError);
  EXPECT_EQ(result.Message, "Plugin has mistakenly been compiled as multi-instance.");
  EXPECT_EQ(OpenWindow(*plugin).Code, platform::smrUnexpectedError);
  EXPECT_EQ(plugin->Frame(), nullptr);
}

TEST_F(PluginObjectTest, OpenWindowShowsAFrameOnTheHostsRoot) {
  auto plugin = Make();
  ASSERT_EQ(plugin->Initialize().Code, platform::smrOk);
  ASSERT_EQ(OpenWindow(*plugin).Code, platform::smrOk);
  ASSERT_NE(plugin->Frame(), nullptr);
  EXPECT_TRUE(plugin->Frame()->isVisible());
  EXPECT_TRUE(plugin->Frame()->isWindow());
  EXPECT_EQ(plugin->Wizard().WizardFolder, (root_.path() / "TSA/Wizard/").string());
}

TEST_F(PluginObjectTest, FinalisationClosesOnlyTheFrameOpenedLastAndUnloadingTheRest) {
  auto plugin = Make();
  ASSERT_EQ(plugin->Initialize().Code, platform::smrOk);
  EXPECT_EQ(plugin->Finalize().Code, platform::smrOk);  // nothing open yet
  ASSERT_EQ(OpenWindow(*plugin).Code, platform::smrOk);
  const QPointer<TfrmMain> first = plugin->Frame();
  ASSERT_EQ(OpenWindow(*plugin).Code, platform::smrOk);
  const QPointer<TfrmMain> second = plugin->Frame();
  EXPECT_NE(first, second);

  EXPECT_EQ(plugin->Finalize().Code, platform::smrOk);
  EXPECT_TRUE(second.isNull());
  ASSERT_FALSE(first.isNull());
  EXPECT_TRUE(first->isVisible());
  EXPECT_EQ(plugin->Frame(), nullptr);
  plugin.reset();
  EXPECT_TRUE(first.isNull());
}

TEST_F(PluginObjectTest, FrameClosedByTheUserIsFreedAndForgotten) {
  auto plugin = Make();
  ASSERT_EQ(plugin->Initialize().Code, platform::smrOk);
  ASSERT_EQ(OpenWindow(*plugin).Code, platform::smrOk);
  const QPointer<TfrmMain> frame = plugin->Frame();
  frame->close();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_TRUE(frame.isNull());
  EXPECT_EQ(plugin->Finalize().Code, platform::smrOk);
}

}  // namespace
}  // namespace tsaw
