#include "creation/report_lines.h"

#include <algorithm>

#include "model/file_bytes.h"
#include "model/text_file.h"
#include "platform/debug_log.h"

namespace tsaw::creation {
namespace {

// Lines wait in memory until this many bytes can go to the scratch file in one write.
constexpr size_t kWaitingBytes = 64 * 1024;

}  // namespace

void TReportLines::Restart(const std::filesystem::path& folder) {
  std::string error;
  scratch_ = TScratchFile::Make(folder, &error);
  if (!scratch_) platform::DebugLine("The report is kept in memory: " + error);
  scratch_failed_ = false;
  waiting_.clear();
}

void TReportLines::Add(const std::string& line) {
  waiting_.append(line).append("\r\n");
  if (!scratch_ || scratch_failed_ || waiting_.size() < kWaitingBytes) return;
  if (scratch_->Append(waiting_)) {
    waiting_.clear();
  } else {
    scratch_failed_ = true;
    platform::DebugLine("The report's scratch file could not be written; the rest is kept in memory.");
  }
}

std::vector<std::string> TReportLines::Read() const {
  std::string text;
  std::string reason;
  if (scratch_ && !scratch_->ReadBack([&text](std::string_view bytes) { text.append(bytes); return true; }, reason)) {
    platform::DebugLine("The report's scratch file could not be read: " + reason);
  }
  text += waiting_;
  std::vector<std::string> lines;
  for (size_t start = 0; start < text.size();) {
    const size_t end = std::min(text.find("\r\n", start), text.size());
    lines.push_back(text.substr(start, end - start));
    start = end + 2;
  }
  return lines;
}

bool TReportLines::SaveAs(const std::filesystem::path& file, const std::vector<std::string>& more) const {
  const TByteSource source = [&](const TByteSink& write, std::string& reason) {
    if (scratch_ && !scratch_->ReadBack(write, reason)) return false;
    return write(waiting_) && write(JoinLines(more));
  };
  std::string error;
  if (WriteFileFrom(file, source, &error)) return true;
  platform::DebugLine("The report could not be saved: " + error);
  return false;
}

}  // namespace tsaw::creation
