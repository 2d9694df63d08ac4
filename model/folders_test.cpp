#include "model/folders.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "testing/fake_machine.h"
#include "testing/temp_dir.h"

namespace tsaw {
namespace {

constexpr const char* kDelphiKey = "\\Software\\Borland\\Delphi\\5.0|RootDir";
constexpr const char* kProgramFilesKey = "Software\\Microsoft\\Windows\\CurrentVersion|ProgramFilesDir";

TEST(FoldersTest, RegistryFoldersAreCleanedAndMapped) {
  struct Case {
    const char* name;
    std::string value;  // as the registry holds it
    std::string expected;
  } const cases[] = {
      {"plain", "C:\\Program Files\\Borland\\Delphi5", "/win/Program Files/Borland/Delphi5"},
      {"one trailing backslash", "C:\\Borland\\Delphi5\\", "/win/Borland/Delphi5"},
      {"several trailing backslashes", "C:\\Borland\\Delphi5\\\\\\\\\\", "/win/Borland/Delphi5"},
      {"doubled backslashes", "C:\\\\Borland\\\\Delphi5", "/win/Borland/Delphi5"},
      {"tripled backslash keeps one double", "C:\\Borland\\\\\\Delphi5", "/win/Borland//Delphi5"},
      {"drive root", "C:\\", "/win"},
      {"no drive: no local folder", "Delphi5", ""},
      {"empty value", "", ""},
  };
  for (const Case& c : cases) {
    testing::FakeMachineFolders machine;
    machine.Registry[kDelphiKey] = c.value;
    machine.Registry[kProgramFilesKey] = c.value;
    EXPECT_EQ(Get_Delphi_Folder(machine), c.expected) << c.name;
    EXPECT_EQ(Get_ProgramFiles_Folder(machine), c.expected) << c.name;
  }
}

TEST(FoldersTest, LocalFoldersLoseTheirTrailingSeparators) {
  testing::FakeMachineFolders machine;
  machine.Root = "/opt/tessera///";
  machine.Windows = "/p/drive_c/windows/";
  machine.System = "/p/drive_c/windows/system32";
  EXPECT_EQ(Get_TSA_RootFolder(machine), "/opt/tessera");
  EXPECT_EQ(Get_Windows_Folder(machine), "/p/drive_c/windows");
  EXPECT_EQ(Get_WindowsSys_Folder(machine), "/p/drive_c/windows/system32");
  EXPECT_EQ(Get_TSA_RootFolder(testing::FakeMachineFolders{}), "");
}

TEST(FoldersTest, FindsTheFoldersOfAFakeWinePrefix) {
  testing::TempDir dir;
  dir.Write("prefix/system.reg",
            "WINE REGISTRY Version 2\n\n"
            "[Software\\\\Borland\\\\Delphi\\\\5.0] 1700000000\n"
            "\"RootDir\"=\"C:\\\\Program Files\\\\Borland\\\\Delphi5\\\\\\\\\"\n\n"
            "[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion] 1700000000\n"
            "\"ProgramFilesDir\"=\"C:\\\\Program Files\"\n");
  dir.MakeDir("prefix/drive_c/Program Files/Borland/Delphi5");
  dir.MakeDir("prefix/drive_c/windows/system32");
  const std::string drive_c = (dir.path() / "prefix/drive_c").string();
  const platform::WineMachineFolders machine({(dir.path() / "prefix").string(), "", "", "/home/u"});
  EXPECT_EQ(Get_TSA_RootFolder(machine), "/home/u/.local/share/tessera");
  EXPECT_EQ(Get_Delphi_Folder(machine), drive_c + "/Program Files/Borland/Delphi5");
  EXPECT_EQ(Get_ProgramFiles_Folder(machine), drive_c + "/Program Files");
  EXPECT_EQ(Get_Windows_Folder(machine), drive_c + "/windows");
  EXPECT_EQ(Get_WindowsSys_Folder(machine), drive_c + "/windows/system32");
}

}  // namespace
}  // namespace tsaw
