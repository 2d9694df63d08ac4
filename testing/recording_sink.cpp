#include "testing/recording_sink.h"

namespace tsaw::testing {
namespace {

class VectorSink : public platform::DebugSink {
 public:
  explicit VectorSink(std::shared_ptr<std::vector<std::string>> lines) : lines_(std::move(lines)) {}
  void Write(std::string_view line) override { lines_->emplace_back(line); }

 private:
  std::shared_ptr<std::vector<std::string>> lines_;
};

}  // namespace

RecordingDebugLog::RecordingDebugLog()
    : lines_(std::make_shared<std::vector<std::string>>()),
      previous_(platform::SetDebugSink(std::make_unique<VectorSink>(lines_))) {}

RecordingDebugLog::~RecordingDebugLog() { platform::SetDebugSink(std::move(previous_)); }

}  // namespace tsaw::testing
