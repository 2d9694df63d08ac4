#pragma once
// Test helpers: a machine whose folders and registry values are given, and a clock that always
// reads the same moment.

#include <map>
#include <string>
#include <string_view>

#include "platform/clock.h"
#include "platform/machine_folders.h"

namespace tsaw::testing {

// Registry values are keyed by "key|name" exactly as the code under test asks for them; a Windows
// path maps to "/win" + the path with its drive letter dropped and '\' turned into '/'.
class FakeMachineFolders final : public platform::MachineFolders {
 public:
  std::string Root, Windows, System;
  std::map<std::string, std::string> Registry;

  std::string FrameworkRoot() const override { return Root; }
  std::string MachineRegistryString(std::string_view key, std::string_view name) const override {
    const auto found = Registry.find(std::string(key) + "|" + std::string(name));
    return found == Registry.end() ? "" : found->second;
  }
  std::string LocalPath(std::string_view windows_path) const override {
    if (windows_path.size() < 2 || windows_path[1] != ':') return "";
    std::string local = "/win" + std::string(windows_path.substr(2));
    for (char& c : local) {
      if (c == '\\') c = '/';
    }
    return local;
  }
  std::string WindowsFolder() const override { return Windows; }
  std::string SystemFolder() const override { return System; }
};

class FixedClock final : public platform::Clock {
 public:
  explicit FixedClock(std::time_t seconds, bool utc = true) : reading_{seconds, utc} {}
  platform::ClockReading Now() const override {
    ++readings_;
    return reading_;
  }
  int readings() const { return readings_; }

 private:
  platform::ClockReading reading_;
  mutable int readings_ = 0;
};

}  // namespace tsaw::testing
