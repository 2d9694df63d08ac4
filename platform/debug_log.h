#pragma once
// The debug log: routines write their qualified name on entry and exit, and detail lines, when
// debug logging is on. It is off by default and costs one branch when off.

#include <memory>
#include <string>
#include <string_view>

namespace tsaw::platform {

// Where debug lines go. The process has one sink at a time; tests install their own.
class DebugSink {
 public:
  virtual ~DebugSink() = default;
  virtual void Write(std::string_view line) = 0;
};

// True when debug lines are recorded. Cheap: a load of one flag.
bool DebugEnabled();

// Writes one detail line when debug logging is on; does nothing otherwise.
void DebugLine(std::string_view line);

// Installs `sink` (nullptr turns logging off) and returns the one it replaces.
std::unique_ptr<DebugSink> SetDebugSink(std::unique_ptr<DebugSink> sink);

// Turns logging on with the file sink when TSAW_DEBUG=1 is in the environment or `force` is true.
// The file is DebugLogPath(); failure to open it leaves logging off and returns false.
bool InitDebugLogFromEnvironment(bool force = false);

// $XDG_STATE_HOME/tsaw/debug.log, or ~/.local/state/tsaw/debug.log.
std::string DebugLogPath();

// The line that reports an exception escaping a routine:
// "TSA EXCEPTION at <qualified name>.<step>: <message>".
std::string ExceptionLine(std::string_view qualified_name, int step, std::string_view message);

// Logs "<name> entered" on construction and "<name> left" on destruction, when logging is on.
class ScopedRoutine {
 public:
  explicit ScopedRoutine(const char* qualified_name);
  ~ScopedRoutine();
  ScopedRoutine(const ScopedRoutine&) = delete;
  ScopedRoutine& operator=(const ScopedRoutine&) = delete;

 private:
  const char* name_;
};

}  // namespace tsaw::platform
