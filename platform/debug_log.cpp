#include "platform/debug_log.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "platform/xdg_folders.h"

namespace tsaw::platform {
namespace {

std::unique_ptr<DebugSink>& CurrentSink() {
  static std::unique_ptr<DebugSink> sink;
  return sink;
}

class FileSink : public DebugSink {
 public:
  explicit FileSink(const std::string& path) : out_(path, std::ios::app) {}
  bool ok() const { return out_.good(); }
  void Write(std::string_view line) override {
    out_ << line << '\n';
    out_.flush();
  }

 private:
  std::ofstream out_;
};

}  // namespace

bool DebugEnabled() { return CurrentSink() != nullptr; }

void DebugLine(std::string_view line) {
  if (auto& sink = CurrentSink()) sink->Write(line);
}

std::unique_ptr<DebugSink> SetDebugSink(std::unique_ptr<DebugSink> sink) {
  std::swap(CurrentSink(), sink);
  return sink;
}

std::string DebugLogPath() {
  const std::filesystem::path base = XdgStateHome().value_or(std::filesystem::temp_directory_path());
  return (base / "tsaw" / "debug.log").string();
}

bool InitDebugLogFromEnvironment(bool force) {
  const char* flag = std::getenv("TSAW_DEBUG");
  if (!force && !(flag && std::string_view(flag) == "1")) return false;
  const std::filesystem::path path = DebugLogPath();
  std::error_code ignored;
  std::filesystem::create_directories(path.parent_path(), ignored);
  auto sink = std::make_unique<FileSink>(path.string());
  if (!sink->ok()) return false;
  SetDebugSink(std::move(sink));
  return true;
}

std::string ExceptionLine(std::string_view qualified_name, int step, std::string_view message) {
  std::string line = "TSA EXCEPTION at ";
  line.append(qualified_name).append(".").append(std::to_string(step)).append(": ").append(message);
  return line;
}

ScopedRoutine::ScopedRoutine(const char* qualified_name) : name_(qualified_name) {
  if (DebugEnabled()) DebugLine(std::string(name_) + " entered");
}

ScopedRoutine::~ScopedRoutine() {
  if (DebugEnabled()) DebugLine(std::string(name_) + " left");
}

}  // namespace tsaw::platform
