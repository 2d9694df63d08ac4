#pragma once
// Test helper: captures debug lines for the life of the object, then restores the previous sink.

#include <memory>
#include <string>
#include <vector>

#include "platform/debug_log.h"

namespace tsaw::testing {

class RecordingDebugLog {
 public:
  RecordingDebugLog();
  ~RecordingDebugLog();
  const std::vector<std::string>& lines() const { return *lines_; }

 private:
  std::shared_ptr<std::vector<std::string>> lines_;
  std::unique_ptr<platform::DebugSink> previous_;
};

}  // namespace tsaw::testing
