#include "preprocessor/marker_cleanup.h"

#include <vector>

#include "platform/runtime_text.h"
#include "platform/find_bytes.h"

namespace tsaw {
namespace {

using platform::SplitLineViews;
using platform::Trim;

// `text` with every `what` removed, in one left-to-right pass (removals are not rescanned).
std::string RemoveAll(std::string_view text, std::string_view what) {
  std::string result;
  result.reserve(text.size());
  std::size_t start = 0;
  for (std::size_t found = platform::FindBytes(text, what); found != std::string_view::npos;
       found = platform::FindBytes(text, what, start)) {
    result.append(text, start, found - start);
    start = found + what.size();
  }
  result.append(text, start);
  return result;
}

// True when the trimmed line contains `marker` and is blank once every `marker` is removed.
bool OnlyMarkers(std::string_view line, std::string_view marker) {
  const std::string_view trimmed = Trim(line);
  if (trimmed.find(marker) == std::string_view::npos) return false;
  return Trim(RemoveAll(trimmed, marker)).empty();
}

enum class LineFate { Keep, Delete, DeleteWithFollowingBlank };

LineFate FateOf(std::string_view line) {
  if (platform::FindBytes(line, "{remove_me_") == std::string_view::npos) return LineFate::Keep;
  static const std::string pair = std::string(kMarkerA) + std::string(kMarkerB);
  if (OnlyMarkers(line, pair)) return LineFate::DeleteWithFollowingBlank;
  if (OnlyMarkers(line, kMarkerB) || OnlyMarkers(line, kMarkerA)) return LineFate::Delete;
  return LineFate::Keep;
}

// Which lines survive a last-to-first pass that deletes in place: "the line that now follows"
// a deleted one is the nearest survivor below it, which `survivors` keeps on its top. Rebuilding
// instead of erasing keeps the pass linear.
std::vector<bool> SurvivingLines(const std::vector<std::string_view>& lines) {
  std::vector<bool> keep(lines.size(), true);
  std::vector<std::size_t> survivors;
  for (std::size_t i = lines.size(); i-- > 0;) {
    const LineFate fate = FateOf(lines[i]);
    if (fate == LineFate::Keep) {
      survivors.push_back(i);
      continue;
    }
    keep[i] = false;
    if (fate == LineFate::DeleteWithFollowingBlank && !survivors.empty() &&
        Trim(lines[survivors.back()]).empty()) {
      keep[survivors.back()] = false;
      survivors.pop_back();
    }
  }
  return keep;
}

// Calls `line(text)` for each remaining line, markers stripped.
template <typename OnLine>
void ForEachCleanLine(std::string_view text, OnLine&& line) {
  const std::vector<std::string_view> lines = SplitLineViews(text);
  const std::vector<bool> keep = SurvivingLines(lines);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!keep[i]) continue;
    if (platform::FindBytes(lines[i], "{remove_me_") == std::string_view::npos) {
      line(lines[i]);
    } else {
      line(RemoveAll(RemoveAll(lines[i], kMarkerA), kMarkerB));
    }
  }
}

}  // namespace

std::vector<std::string> CleanUpMarkers(std::string_view text) {
  std::vector<std::string> result;
  ForEachCleanLine(text, [&result](std::string_view line) { result.emplace_back(line); });
  return result;
}

std::string CleanUpMarkersToText(std::string_view text) {
  std::string result;
  result.reserve(text.size() + 2);
  ForEachCleanLine(text, [&result](std::string_view line) { result.append(line).append("\r\n"); });
  return result;
}

}  // namespace tsaw
