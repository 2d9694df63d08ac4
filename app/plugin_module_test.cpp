// The wizard's plug-in module as the host meets it: loaded from its file, registered,
// initialised, asked to open windows, finalised and unloaded.

#include <gtest/gtest.h>

#include <cstdlib>

#include <QWidget>

#include <filesystem>

#include "platform/plugin_host.h"
#include "testing/qt_application.h"
#include "testing/temp_dir.h"
#include "testing/wizard_root.h"

namespace tsaw {
namespace {

TEST(PluginModuleTest, IsNamedForTheSelectorFile) {
  EXPECT_EQ(std::filesystem::path(TSAW_PLUGIN_MODULE).filename(), "TSaW.tsa");
}

TEST(PluginModuleTest, RegistersOpensWindowsAndClosesThemOnTheWayOut) {
  testing::TestApplication();
  testing::TempDir root;
  // The frames remember their place on closing: in the test's folder, not the user's.
  setenv("XDG_CONFIG_HOME", (root.path() / "config").c_str(), 1);
  testing::WriteWizardRoot(root);
  QWidget host;
  std::string error;
  auto module = platform::TPluginModule::Load(TSAW_PLUGIN_MODULE, error);
  ASSERT_NE(module, nullptr) << error;
  EXPECT_EQ(module->Plugin().Settings().DeepName, "Tessera Wizard");
  EXPECT_EQ(module->Plugin().Settings().InstanceMode, platform::TInstanceMode::SingleInstance);
  module->Plugin().AttachHost({root.path().string(), false});
  ASSERT_EQ(module->Initialize().Code, platform::smrOk);

  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(module->Plugin().Execute("OpenWindow", {{"pamParentWindow", &host}}).Code, platform::smrOk);
  }
  ASSERT_EQ(host.findChildren<QWidget*>("frmMain", Qt::FindDirectChildrenOnly).size(), 2);
  EXPECT_EQ(module->Plugin().Finalize().Code, platform::smrOk);
  const QList<QWidget*> left = host.findChildren<QWidget*>("frmMain", Qt::FindDirectChildrenOnly);
  ASSERT_EQ(left.size(), 1);
  EXPECT_TRUE(left[0]->isVisible());
  module.reset();
  EXPECT_TRUE(host.findChildren<QWidget*>("frmMain").isEmpty());
}

}  // namespace
}  // namespace tsaw
