// The cleaning of project-settings files over any lines, for each kind of file; the first byte
// chooses the kind.

#include <cstddef>
#include <cstdint>
#include <string>

#include "creation/project_file_cleaning.h"
#include "fuzz/fuzz_input.h"
#include "model/text_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size == 0) return 0;
  static const char* const kKinds[] = {".cfg", ".dof", ".bdsproj", ".dproj"};
  const std::string ext = kKinds[data[0] % 4];
  std::vector<std::string> lines = tsaw::SplitLines(tsaw::DecodeText(tsaw::fuzz::AsText(data + 1, size - 1)).Text);
  tsaw::creation::Remove_Template_Directives(lines, ext, [](const std::string&) {});
  tsaw::creation::CleanDefines(tsaw::JoinLines(lines));
  return 0;
}
