#include "jobs/config.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "model/expand.h"
#include "testing/recording_sink.h"
#include "testing/temp_dir.h"

namespace tsaw {
namespace {

class ConfigTest : public ::testing::Test {
 protected:
  ConfigTest() { wizard_.WizardFolder = (dir_.path() / "").string(); }
  testing::TempDir dir_;
  TWizard wizard_;
};

TEST_F(ConfigTest, ShellBrowserModeIsOneOrTwo) {
  struct Case {
    const char* line;
    int mode;
  } cases[] = {{"ShellBrowserPlugin=2", 2}, {"ShellBrowserPlugin= 1 ", 1}, {"ShellBrowserPlugin=3", 1},
               {"ShellBrowserPlugin=0", 1}, {"ShellBrowserPlugin=x", 1},   {"ShellBrowserPlugin=2x", 1},
               {"Other=2", 1}};
  for (const Case& c : cases) {
    dir_.Write("TSaW.Default.ini", std::string("[TSaW Config]\r\n") + c.line + "\r\n");
    wizard_.ShellBrowserMode = 0;
    EXPECT_TRUE(Read_Settings(wizard_).empty()) << c.line;
    EXPECT_EQ(wizard_.ShellBrowserMode, c.mode) << c.line;
  }
}

TEST_F(ConfigTest, SelectorNamesTheConfigurationFile) {
  const std::string folder = wizard_.WizardFolder;
  struct Case {
    const char* name;
    const char* selector;  // nullptr: no selector file
    std::string config_file;
    std::string warning;
  } cases[] = {
      {"no selector", nullptr, folder + "TSaW.Default.ini", ""},
      {"no Config key", "[TSaW]\r\nOther=1\r\n", folder + "TSaW.Default.ini", ""},
      {"named", "[TSaW]\r\nConfig=Office\r\n", folder + "TSaW.Office.ini", ""},
      {"named but missing", "[TSaW]\r\nConfig=Mobile\r\n", folder + "TSaW.Mobile.ini",
       "Configuration file \"" + folder + "TSaW.Mobile.ini\" (named in \"" + folder +
           "TSaW.ini\") was not found; no configuration values are used."},
      {"climbing", "[TSaW]\r\nConfig=../x\r\n", folder + "TSaW.Default.ini",
       "Configuration \"../x\" named in \"" + folder + "TSaW.ini\" is not a plain name (it holds a path "
       "separator); the configuration \"Default\" is used instead."},
      {"root", "[TSaW]\r\nConfig=/\r\n", folder + "TSaW.Default.ini",
       "Configuration \"/\" named in \"" + folder + "TSaW.ini\" is not a plain name (it holds a path "
       "separator); the configuration \"Default\" is used instead."},
  };
  dir_.Write("TSaW.Default.ini", "");
  dir_.Write("TSaW.Office.ini", "");
  for (const Case& c : cases) {
    std::filesystem::remove(dir_.path() / "TSaW.ini");
    if (c.selector) dir_.Write("TSaW.ini", c.selector);
    const std::vector<std::string> warnings = Read_Settings(wizard_);
    EXPECT_EQ(wizard_.ConfigFile, c.config_file) << c.name;
    EXPECT_EQ(warnings, c.warning.empty() ? std::vector<std::string>{} : std::vector<std::string>{c.warning})
        << c.name;
  }
}

TEST_F(ConfigTest, ReadsCustomAndLookupVariablesIntoAFreshTable) {
  dir_.Write("TSaW.Default.ini",
             "[Custom Variables]\r\nColour=Title=Main colour\xC2\xA6red\r\n"
             "[Lookup Variables]\r\nCustom.Colour=red\xC2\xB6green\r\n");
  wizard_.Variables.resize(3);  // a stale table that Read_Settings replaces
  testing::RecordingDebugLog log;
  EXPECT_TRUE(Read_Settings(wizard_).empty());
  const uint16_t colour = FindVarByName(wizard_, "Custom.Colour");
  ASSERT_NE(colour, 0);
  EXPECT_EQ(colour, kInitialVariableCount);
  EXPECT_EQ(wizard_.Variables[colour].Value, "red");
  EXPECT_EQ(wizard_.Variables[colour].Title, "Main colour");
  const uint16_t lookup = FindVarByName(wizard_, "Lookup.Custom.Colour");
  ASSERT_NE(lookup, 0);
  EXPECT_EQ(wizard_.Variables[colour].LookupVar, lookup);
  const std::string expected_log = "ConfigName: 'Default'  ConfigFile: 'TSaW.Default.ini'  ConfigFileName: '" +
                                   wizard_.WizardFolder + "TSaW.Default.ini'";
  EXPECT_NE(std::find(log.lines().begin(), log.lines().end(), expected_log), log.lines().end());
}

}  // namespace
}  // namespace tsaw
