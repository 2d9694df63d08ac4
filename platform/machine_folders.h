#pragma once
// The machine facts behind the wizard's Path.* variables: the framework's root folder, values of
// the machine-wide registry, and the Windows and system folders. The IDEs these projects are for
// run under Wine here, so the Linux implementation reads a Wine prefix.

#include <string>
#include <string_view>

namespace tsaw::platform {

class MachineFolders {
 public:
  virtual ~MachineFolders() = default;
  // The Tessera framework's root folder as a local path; empty when unknown.
  virtual std::string FrameworkRoot() const = 0;
  // The text of string value `name` of HKEY_LOCAL_MACHINE key `key` (backslash-separated, a
  // leading backslash allowed), as Windows would return it; empty when the key or value is
  // missing or holds no text.
  virtual std::string MachineRegistryString(std::string_view key, std::string_view name) const = 0;
  // The local path of a Windows path such as "C:\Program Files"; empty when it names no local folder.
  virtual std::string LocalPath(std::string_view windows_path) const = 0;
  // The Windows folder and the system folder as local paths; empty when unknown.
  virtual std::string WindowsFolder() const = 0;
  virtual std::string SystemFolder() const = 0;
};

// The environment the Linux implementation looks at; empty texts mean unset.
struct MachineEnvironment {
  std::string WinePrefix;   // $WINEPREFIX
  std::string TesseraRoot;  // $TESSERA_ROOT
  std::string XdgDataHome;  // $XDG_DATA_HOME
  std::string Home;         // $HOME

  static MachineEnvironment FromProcess();
};

// The Linux implementation. The framework root is `root_override` (the --root option), else
// $TESSERA_ROOT, else $XDG_DATA_HOME/tessera, else ~/.local/share/tessera; it need not exist yet.
// The registry and the Windows folders come from the Wine prefix ($WINEPREFIX, else ~/.wine):
// HKEY_LOCAL_MACHINE is its system.reg, and keys below "Software" are looked up in the 32-bit
// view (Wow6432Node) first, because the IDEs are 32-bit programs. Drive letters map through
// <prefix>/dosdevices/<x>: (C: falls back to <prefix>/drive_c), and each path component is matched
// without regard to letter case, as Windows does. Without a prefix folder all of these are empty.
class WineMachineFolders final : public MachineFolders {
 public:
  explicit WineMachineFolders(const MachineEnvironment& environment, std::string root_override = {});

  std::string FrameworkRoot() const override { return root_; }
  std::string MachineRegistryString(std::string_view key, std::string_view name) const override;
  std::string LocalPath(std::string_view windows_path) const override;
  std::string WindowsFolder() const override;
  std::string SystemFolder() const override;

 private:
  std::string root_;
  std::string prefix_;  // empty when there is no prefix folder
};

}  // namespace tsaw::platform
