#include "update/merge.h"

#include <git2.h>

#include <stdexcept>

namespace tsaw::update {
namespace {

constexpr const char* kMarkers[] = {"<<<<<<< ", "||||||| ", "=======", ">>>>>>> "};

bool IsMarkerLine(std::string_view line) {
  for (const char* marker : kMarkers) {
    if (line.substr(0, std::string_view(marker).size()) == marker) return true;
  }
  return false;
}

// git writes its marker lines with LF; a CR LF file gets CR LF marker lines.
std::string MarkersWithCrLf(std::string_view text) {
  std::string out;
  out.reserve(text.size() + 64);
  size_t start = 0;
  while (start < text.size()) {
    size_t end = text.find('\n', start);
    const bool has_break = end != std::string_view::npos;
    if (!has_break) end = text.size();
    std::string_view line = text.substr(start, end - start);
    out += line;
    if (has_break) {
      if (IsMarkerLine(line) && (line.empty() || line.back() != '\r')) out += '\r';
      out += '\n';
    }
    start = end + 1;
  }
  return out;
}

git_merge_file_input Input(std::string_view bytes, const char* label) {
  git_merge_file_input input = GIT_MERGE_FILE_INPUT_INIT;
  input.ptr = bytes.data();
  input.size = bytes.size();
  input.path = label;
  return input;
}

}  // namespace

bool LooksBinary(std::string_view bytes) {
  return bytes.substr(0, 8000).find('\0') != std::string_view::npos;
}

TMergeResult MergeText(std::string_view base, std::string_view ours, std::string_view theirs) {
  git_libgit2_init();
  const git_merge_file_input ancestor = Input(base, "base"), mine = Input(ours, "ours"),
                             template_side = Input(theirs, "theirs");
  git_merge_file_options options = GIT_MERGE_FILE_OPTIONS_INIT;
  options.ancestor_label = "base (last generation)";
  options.our_label = "ours (your edit)";
  options.their_label = "theirs (new generation)";
  options.flags = GIT_MERGE_FILE_STYLE_DIFF3;
  git_merge_file_result result = {};
  const int failed = git_merge_file(&result, &ancestor, &mine, &template_side, &options);
  TMergeResult merged;
  if (failed == 0) {
    merged.Clean = result.automergeable != 0;
    const std::string_view text(result.ptr, result.len);
    merged.Text = !merged.Clean && ours.find("\r\n") != std::string_view::npos ? MarkersWithCrLf(text)
                                                                                 : std::string(text);
  }
  git_merge_file_result_free(&result);
  git_libgit2_shutdown();
  if (failed != 0) throw std::runtime_error("the three-way merge failed");
  return merged;
}

}  // namespace tsaw::update
