#include "model/startup.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sstream>

#include "model/variables.h"
#include "testing/fake_machine.h"
#include "testing/temp_dir.h"

namespace tsaw {
namespace {

const TProgramInfo kProgram{"TsaWizard", "6.01"};

// Dates and times in these tests are read in the "C" locale, whatever the machine's is.
class StartupTest : public ::testing::Test {
 protected:
  StartupTest() {
    if (const char* saved = std::getenv("LC_ALL")) saved_lc_all_ = saved;
    setenv("LC_ALL", "C", 1);
    Init_Variables(wizard_);
  }
  ~StartupTest() override {
    if (saved_lc_all_) {
      setenv("LC_ALL", saved_lc_all_->c_str(), 1);
    } else {
      unsetenv("LC_ALL");
    }
  }

  TWizard wizard_;
  std::optional<std::string> saved_lc_all_;
};

// Number, name, value, default value and identifier value of variables `from`..`to`, one a line.
std::string Describe(const TWizard& wizard, uint16_t from, uint16_t to) {
  std::ostringstream out;
  for (uint16_t i = from; i <= to; ++i) {
    const TVariableItem& v = wizard.Variables[i];
    out << i << " " << v.Name << " = '" << v.Value << "' default '" << v.DefaultValue << "' idf '" << v.IdfValue
        << "'\n";
  }
  return out.str();
}

// Every field a declared variable carries, for whole comparison.
std::string DescribeDeclared(const TVariableItem& v) {
  std::ostringstream out;
  out << v.Name << " token=" << v.Token << " title='" << v.Title << "' kind='" << v.Kind << "' hint='" << v.Hint
      << "' value='" << v.Value << "' default='" << v.DefaultValue << "' idf='" << v.IdfValue
      << "' user=" << v.UserDefined << " pin=" << v.IsPluginArray << " lookup=" << v.IsLookup
      << " looked-up=" << v.LookedUpVar << " list=" << v.ListCount;
  return out.str();
}

TEST_F(StartupTest, SetsTheFixedVariablesFromOneClockReading) {
  testing::FakeMachineFolders machine;
  machine.Root = "/home/u/tessera/";
  machine.Windows = "/p/drive_c/windows";
  machine.System = "/p/drive_c/windows/system32";
  machine.Registry["\\Software\\Borland\\Delphi\\5.0|RootDir"] = "C:\\Borland\\D5\\";
  machine.Registry["Software\\Microsoft\\Windows\\CurrentVersion|ProgramFilesDir"] = "C:\\Program Files";
  const testing::FixedClock clock(1700000000);  // 2023-11-14 22:13:20 UTC
  Set_Fixed_Variables(wizard_, kProgram, clock, machine);
  EXPECT_EQ(clock.readings(), 1);
  EXPECT_EQ(Describe(wizard_, 1, 13),
            "1 TSA.Version = '2.2.05' default '2.2.05' idf '2205'\n"
            "2 TSaW.DeepName = 'TsaWizard' default 'TsaWizard' idf 'TsaWizard'\n"
            "3 TSaW.Version = '6.01' default '6.01' idf '_6_01'\n"
            "4 Creation.Date = '11/14/23' default '11/14/23' idf '_11_14_23'\n"
            "5 Creation.Time = '22:13:20' default '22:13:20' idf '_22_13_20'\n"
            "6 Creation.Year = '2023' default '2023' idf '_2023'\n"
            "7 Path.Delphi = '/win/Borland/D5' default '/win/Borland/D5' idf '_win_Borland_D5'\n"
            "8 Path.TsaProjects = '#Path.TsaRoot#/User Projects' default '#Path.TsaRoot#/User Projects' "
            "idf 'Path_TsaRoot_User_Projects'\n"
            "9 Path.TsaRoot = '/home/u/tessera/TSA' default '/home/u/tessera/TSA' idf '_home_u_tessera_TSA'\n"
            "10 Path.WindowsSystem = '/p/drive_c/windows/system32' default '/p/drive_c/windows/system32' "
            "idf '_p_drive_c_windows_system32'\n"
            "11 Path.Windows = '/p/drive_c/windows' default '/p/drive_c/windows' idf '_p_drive_c_windows'\n"
            "12 Path.ProgramFiles = '/win/Program Files' default '/win/Program Files' idf '_win_Program_Files'\n"
            "13 Template.Prefix = '' default '' idf ''\n");
  EXPECT_EQ(Describe(wizard_, 22, 22),
            "22 Project.Group = 'vrProjects_Prefix_vrTarget' default 'vrProjects_Prefix_vrTarget' "
            "idf 'vrProjects_Prefix_vrTarget'\n");
}

TEST_F(StartupTest, UnknownFoldersGiveEmptyPathsAndABareTsaFolder) {
  Set_Fixed_Variables(wizard_, kProgram, testing::FixedClock(0), testing::FakeMachineFolders{});
  EXPECT_EQ(Describe(wizard_, 7, 12),
            "7 Path.Delphi = '' default '' idf ''\n"
            "8 Path.TsaProjects = '#Path.TsaRoot#/User Projects' default '#Path.TsaRoot#/User Projects' "
            "idf 'Path_TsaRoot_User_Projects'\n"
            "9 Path.TsaRoot = '/TSA' default '/TSA' idf '_TSA'\n"
            "10 Path.WindowsSystem = '' default '' idf ''\n"
            "11 Path.Windows = '' default '' idf ''\n"
            "12 Path.ProgramFiles = '' default '' idf ''\n");
}

TEST_F(StartupTest, BuildsTheVariableTableWhenThereIsNone) {
  TWizard empty;
  Set_Fixed_Variables(empty, kProgram, testing::FixedClock(0), testing::FakeMachineFolders{});
  ASSERT_EQ(empty.Variables.size(), kInitialVariableCount);
  EXPECT_EQ(empty.Variables[1].Value, "2.2.05");
}

std::string DescribeDirectives(const TWizard& wizard) {
  std::ostringstream out;
  for (size_t i = 0; i < wizard.Directives.size(); ++i) {
    out << i << " " << wizard.Directives[i].VarIdx << " '" << wizard.Directives[i].Name << "'\n";
  }
  out << "high " << wizard.DirectivesHigh << " last fixed " << wizard.LastFixedDirective;
  return out.str();
}

TEST_F(StartupTest, FixedDirectivesFollowTheNineKeptItems) {
  wizard_.RunDirectives.PluginIndex = 20;
  wizard_.RunDirectives.PluginExtensionOther = 22;
  Set_Fixed_Directives(wizard_, kProgram);
  EXPECT_EQ(DescribeDirectives(wizard_),
            "0 0 ''\n1 0 ''\n2 0 ''\n3 0 ''\n4 0 ''\n5 0 ''\n6 0 ''\n7 0 ''\n8 0 ''\n"
            "9 1 'ddTsa2205'\n10 3 'ddTsaw601'\n11 41 'ddUseTLG'\n12 42 'ddLogComments'\n"
            "13 43 'ddLogInitFinit'\n14 44 'ddLogPinCreation'\n15 45 'ddLogFunctionResults'\n"
            "16 46 'ddCommentedHeaders'\n"
            "high 16 last fixed 16");
  EXPECT_EQ(wizard_.RunDirectives.PluginIndex, ddUndef);
  EXPECT_EQ(wizard_.RunDirectives.PluginExtensionOther, ddUndef);
}

TEST_F(StartupTest, VersionDirectiveDropsOnlyTheFirstDot) {
  const std::pair<std::string, std::string> cases[] = {
      {"6.01", "ddTsaw601"}, {"6.0.1", "ddTsaw60.1"}, {"7", "ddTsaw7"}, {"", "ddTsaw"}};
  for (const auto& [version, name] : cases) {
    Set_Fixed_Directives(wizard_, {"TsaWizard", version});
    EXPECT_EQ(wizard_.Directives[10].Name, name) << version;
  }
}

TEST_F(StartupTest, SettingFixedDirectivesAgainGivesTheSameTable) {
  Set_Fixed_Directives(wizard_, kProgram);
  const std::string once = DescribeDirectives(wizard_);
  // What a run does in between: rename kept items, append run directives.
  ResetDirective(wizard_, 3, "");
  const std::string renamed = DescribeDirectives(wizard_);
  wizard_.RunDirectives.Target = MakeNewDirective(wizard_, viTarget, "Target_D7W32");
  Set_Fixed_Directives(wizard_, kProgram);
  EXPECT_EQ(DescribeDirectives(wizard_), renamed);
  Set_Fixed_Directives(wizard_, kProgram);
  EXPECT_EQ(DescribeDirectives(wizard_), renamed);
  EXPECT_NE(once, renamed);  // kept items keep what a run made of them
  EXPECT_EQ(wizard_.RunDirectives.Target, ddUndef);
}

TEST_F(StartupTest, ClearingLengthensAShortDirectiveTable) {
  MakeNewDirective(wizard_, 1, "Only");
  Clear_NonFixed_Directive_Constants(wizard_);
  EXPECT_EQ(DescribeDirectives(wizard_),
            "0 0 ''\n1 1 'ddOnly'\n2 0 ''\n3 0 ''\n4 0 ''\n5 0 ''\n6 0 ''\n7 0 ''\n8 0 ''\nhigh 8 last fixed 0");
}

TEST_F(StartupTest, CustomVariableWithTitle) {
  const TIniFile ini = TIniFile::FromText("[Custom Variables]\nColour=Title=Main colour\xC2\xA6red\n");
  Custom_or_Lookup_Variables(wizard_, ini, false);
  ASSERT_EQ(wizard_.VarCount, 48);
  EXPECT_EQ(DescribeDeclared(wizard_.Variables[48]),
            "Custom.Colour token=vrCustom_Colour title='Main colour' kind='' hint='' value='red' default='red' "
            "idf='red' user=1 pin=0 lookup=0 looked-up=0 list=0");
}

TEST_F(StartupTest, DeclaredVariablesInBothEncodings) {
  const std::string utf8 =
      "[Custom Variables]\n"
      "Skipped=\n"
      "Langs=Delphi \xC2\xB6 Pascal \xC2\xB6 C\n"
      "[Lookup Variables]\n"
      "Product.Name=Title=Products \xC2\xA6 Kind=List \xC2\xA6 Hint = Pick one \xC2\xA6 Alpha \xC2\xB6 Beta \xC2\xB6 Gamma\n"
      "Author=Title=Authors\xC2\xA6Kind=Names\xC2\xA6 Ann\n"
      "Nothing.Here=Zed\n";
  std::string cp1252 = utf8;
  for (size_t pos; (pos = cp1252.find('\xC2')) != std::string::npos;) cp1252.erase(pos, 1);
  for (const auto& [name, bytes] : {std::pair{"utf-8", utf8}, std::pair{"windows-1252", cp1252}}) {
    testing::TempDir dir;
    TWizard wizard;
    Init_Variables(wizard);
    const TIniFile ini = TIniFile::Load(dir.Write("TSaW.Default.ini", bytes));
    Custom_or_Lookup_Variables(wizard, ini, false);
    Custom_or_Lookup_Variables(wizard, ini, true);
    ASSERT_EQ(wizard.VarCount, 51) << name;
    std::string described;
    for (uint16_t i = 48; i <= 51; ++i) described += DescribeDeclared(wizard.Variables[i]) + "\n";
    EXPECT_EQ(described,
              "Custom.Langs token=vrCustom_Langs title='' kind='' hint='' value='Delphi\r\nPascal\r\nC' "
              "default='Delphi\r\nPascal\r\nC' idf='DelphiPascalC' user=1 pin=0 lookup=0 looked-up=0 list=0\n"
              "Lookup.Product.Name token=vrLookup_Product_Name title='Products' kind='List' hint='Pick one' "
              "value='Alpha\r\nBeta\r\nGamma' default='Alpha\r\nBeta\r\nGamma' idf='AlphaBetaGamma' user=1 pin=0 "
              "lookup=1 looked-up=23 list=3\n"
              "Lookup.Author token=vrLookup_Author title='Authors' kind='Names' hint='' value='Ann' default='Ann' "
              "idf='Ann' user=1 pin=0 lookup=1 looked-up=25 list=2\n"
              "Lookup.Nothing.Here token=vrLookup_Nothing_Here title='' kind='' hint='' value='Zed' default='Zed' "
              "idf='Zed' user=1 pin=0 lookup=1 looked-up=0 list=0\n")
        << name;
    EXPECT_EQ(wizard.Variables[viProductName].LookupVar, 49) << name;
    EXPECT_EQ(wizard.Variables[viAuthor].LookupVar, 50) << name;
  }
}

// Variable names match exactly, so a key in other letter case declares another variable.
TEST_F(StartupTest, RedeclaringAVariableUpdatesItInPlace) {
  Custom_or_Lookup_Variables(wizard_, TIniFile::FromText("[Custom Variables]\nColour=Title=Main\xC2\xA6red\n"), false);
  Custom_or_Lookup_Variables(wizard_, TIniFile::FromText("[custom variables]\nColour=blue\n"), false);
  Custom_or_Lookup_Variables(wizard_, TIniFile::FromText("[Custom Variables]\ncolour=green\n"), false);
  ASSERT_EQ(wizard_.VarCount, 49);
  EXPECT_EQ(DescribeDeclared(wizard_.Variables[48]),
            "Custom.Colour token=vrCustom_Colour title='Main' kind='' hint='' value='blue' default='blue' "
            "idf='blue' user=1 pin=0 lookup=0 looked-up=0 list=0");
  EXPECT_EQ(DescribeDeclared(wizard_.Variables[49]),
            "Custom.colour token=vrCustom_colour title='' kind='' hint='' value='green' default='green' "
            "idf='green' user=1 pin=0 lookup=0 looked-up=0 list=0");
}

}  // namespace
}  // namespace tsaw
