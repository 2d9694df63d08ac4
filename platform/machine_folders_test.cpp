#include "platform/machine_folders.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "testing/temp_dir.h"

namespace tsaw::platform {
namespace {
namespace fs = std::filesystem;

// Written as Wine writes it: escaped backslashes and quotes, stamps after key names, values of
// several types, and a 64-bit prefix's 32-bit view.
constexpr const char* kSystemReg =
    "WINE REGISTRY Version 2\n"
    ";; All keys relative to \\\\Machine\n"
    "\n"
    "#arch=win64\n"
    "\n"
    "[Software\\\\Borland\\\\Delphi\\\\5.0] 1700000000\n"
    "#time=1da1b2c3d4e5f60\n"
    "\"RootDir\"=\"C:\\\\Program Files\\\\Borland\\\\Delphi5\\\\\"\n"
    "\"Version\"=dword:00000005\n"
    "\"Quoted\"=\"say \\\"hi\\\"\"\n"
    "\"Accented\"=\"caf\\x00e9\"\n"
    "\"Expand\"=str(2):\"%SystemRoot%\\\\x\"\n"
    "@=\"default text\"\n"
    "\r\n"
    "[Software\\\\Borland\\\\Delphi\\\\5.0\\\\Extra] 1700000000\n"
    "\"Other\"=\"only in the subkey\"\n"
    "\n"
    "[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion] 1700000000\r\n"
    "\"ProgramFilesDir\"=\"C:\\\\Program Files\"\r\n"
    "\n"
    "[Software\\\\Wow6432Node\\\\Microsoft\\\\Windows\\\\CurrentVersion] 1700000000\n"
    "\"ProgramFilesDir\"=\"C:\\\\Program Files (x86)\"\n";

class WinePrefixTest : public ::testing::Test {
 protected:
  WinePrefixTest() {
    prefix_ = dir_.MakeDir("wine").string();
    dir_.Write("wine/system.reg", kSystemReg);
    dir_.MakeDir("wine/drive_c/windows/system32");
    dir_.MakeDir("wine/drive_c/Program Files/Borland/Delphi5");
    dir_.MakeDir("wine/dosdevices");
    fs::create_directory_symlink("../drive_c", dir_.path() / "wine/dosdevices/c:");
    fs::create_directory_symlink("/", dir_.path() / "wine/dosdevices/z:");
  }
  WineMachineFolders Machine() const { return WineMachineFolders({prefix_, "", "", ""}); }

  testing::TempDir dir_;
  std::string prefix_;
};

TEST_F(WinePrefixTest, ReadsMachineRegistryStrings) {
  struct Case {
    const char* key;
    const char* name;
    std::string expected;
  } const cases[] = {
      {"\\Software\\Borland\\Delphi\\5.0", "RootDir", "C:\\Program Files\\Borland\\Delphi5\\"},
      {"SOFTWARE\\borland\\DELPHI\\5.0\\", "rootdir", "C:\\Program Files\\Borland\\Delphi5\\"},
      {"Software\\Borland\\Delphi\\5.0", "Quoted", "say \"hi\""},
      {"Software\\Borland\\Delphi\\5.0", "Accented", "caf\xC3\xA9"},
      {"Software\\Borland\\Delphi\\5.0", "Expand", "%SystemRoot%\\x"},
      {"Software\\Borland\\Delphi\\5.0", "", "default text"},
      {"Software\\Borland\\Delphi\\5.0", "Version", ""},
      {"Software\\Borland\\Delphi\\5.0", "Other", ""},
      {"Software\\Borland\\Delphi\\5.0", "Missing", ""},
      {"Software\\Borland\\Delphi\\6.0", "RootDir", ""},
      {"Software\\Microsoft\\Windows\\CurrentVersion", "ProgramFilesDir", "C:\\Program Files (x86)"},
  };
  const WineMachineFolders machine = Machine();
  for (const Case& c : cases) {
    EXPECT_EQ(machine.MachineRegistryString(c.key, c.name), c.expected) << c.key << " / " << c.name;
  }
}

TEST_F(WinePrefixTest, MapsWindowsPathsIntoThePrefix) {
  const std::string drive_c = prefix_ + "/drive_c";
  struct Case {
    const char* windows_path;
    std::string expected;
  } const cases[] = {
      {"C:\\Program Files\\Borland\\Delphi5", drive_c + "/Program Files/Borland/Delphi5"},
      {"c:\\PROGRAM FILES\\borland\\delphi5\\", drive_c + "/Program Files/Borland/Delphi5"},
      {"C:\\Not There\\Sub", drive_c + "/Not There/Sub"},
      {"C:", drive_c},
      {"Z:\\usr\\lib", "/usr/lib"},
      {"D:\\Data", ""},
      {"\\\\server\\share", ""},
      {"Program Files", ""},
      {"", ""},
  };
  const WineMachineFolders machine = Machine();
  for (const Case& c : cases) EXPECT_EQ(machine.LocalPath(c.windows_path), c.expected) << c.windows_path;
}

TEST_F(WinePrefixTest, WindowsFoldersAreThoseOfThePrefix) {
  const WineMachineFolders machine = Machine();
  EXPECT_EQ(machine.WindowsFolder(), prefix_ + "/drive_c/windows");
  EXPECT_EQ(machine.SystemFolder(), prefix_ + "/drive_c/windows/system32");
}

TEST_F(WinePrefixTest, CDriveWithoutDeviceLinkIsDriveC) {
  fs::remove(dir_.path() / "wine/dosdevices/c:");
  EXPECT_EQ(Machine().WindowsFolder(), prefix_ + "/drive_c/windows");
}

TEST_F(WinePrefixTest, PrefixIsFoundInHomeWhenWineprefixIsUnset) {
  fs::rename(prefix_, dir_.path() / ".wine");
  const WineMachineFolders machine({"", "", "", dir_.path().string()});
  EXPECT_EQ(machine.SystemFolder(), (dir_.path() / ".wine/drive_c/windows/system32").string());
}

TEST(WineMachineFoldersTest, WithoutPrefixEverythingIsUnknown) {
  testing::TempDir home;
  const WineMachineFolders machine({(home.path() / "no-such-prefix").string(), "", "", home.path().string()});
  EXPECT_EQ(machine.MachineRegistryString("Software\\Microsoft\\Windows\\CurrentVersion", "ProgramFilesDir"), "");
  EXPECT_EQ(machine.LocalPath("C:\\windows"), "");
  EXPECT_EQ(machine.WindowsFolder(), "");
  EXPECT_EQ(machine.SystemFolder(), "");
}

TEST(WineMachineFoldersTest, PrefixWithoutWindowsFolderHasNoWindowsFolders) {
  testing::TempDir prefix;
  const WineMachineFolders machine({prefix.path().string(), "", "", ""});
  EXPECT_EQ(machine.WindowsFolder(), "");
  EXPECT_EQ(machine.SystemFolder(), "");
  EXPECT_EQ(machine.MachineRegistryString("Software\\X", "Y"), "");
}

TEST(WineMachineFoldersTest, FrameworkRootFollowsOverrideThenEnvironment) {
  struct Case {
    const char* name;
    MachineEnvironment environment;
    const char* root_override;
    std::string expected;
  } const cases[] = {
      {"override first", {"", "/env/root", "/xdg", "/home/u"}, "/given", "/given"},
      {"TESSERA_ROOT", {"", "/env/root", "/xdg", "/home/u"}, "", "/env/root"},
      {"XDG_DATA_HOME", {"", "", "/xdg", "/home/u"}, "", "/xdg/tessera"},
      {"relative XDG_DATA_HOME ignored", {"", "", "xdg", "/home/u"}, "", "/home/u/.local/share/tessera"},
      {"HOME", {"", "", "", "/home/u"}, "", "/home/u/.local/share/tessera"},
      {"nothing", {"", "", "", ""}, "", ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(WineMachineFolders(c.environment, c.root_override).FrameworkRoot(), c.expected) << c.name;
  }
}

}  // namespace
}  // namespace tsaw::platform
