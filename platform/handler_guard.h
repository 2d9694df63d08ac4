#pragma once
// No exception leaves a user-interface event handler: handlers run their body through
// RunHandler, which logs entry and exit and turns an escaping exception into a log line.

#include <exception>
#include <string>

#include "platform/debug_log.h"

namespace tsaw::platform {

// Runs `body(step)`, where `step` is the handler's step counter (10, 20, ...) that the body
// advances as it goes. An exception escaping the body is logged as
// "TSA EXCEPTION at <qualified name>.<step>: <message>" and swallowed.
template <typename Body>
void RunHandler(const char* qualified_name, Body&& body) {
  ScopedRoutine routine(qualified_name);
  int step = 0;
  try {
    body(step);
  } catch (const std::exception& error) {
    DebugLine(ExceptionLine(qualified_name, step, error.what()));
  } catch (...) {
    DebugLine(ExceptionLine(qualified_name, step, "unknown exception"));
  }
}

}  // namespace tsaw::platform
