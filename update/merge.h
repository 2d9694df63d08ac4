#pragma once
// The line merge of one file: base, ours (the developer's) and theirs (the new generation),
// with git's three-way merge. Overlapping changes give diff3-style conflict markers.

#include <string>
#include <string_view>

namespace tsaw::update {

struct TMergeResult {
  bool Clean = false;
  std::string Text;  // the merged text; with conflict markers when not clean
};

// Merges line by line. The marker lines end as the developer's lines end (CR LF or LF), so a
// CR LF file stays CR LF; bytes are merged as they are, whatever the encoding. Throws
// std::runtime_error when the merge cannot be made.
TMergeResult MergeText(std::string_view base, std::string_view ours, std::string_view theirs);

// True when `bytes` look like a binary file: a NUL byte in the first 8,000 bytes, as git decides.
bool LooksBinary(std::string_view bytes);

}  // namespace tsaw::update
