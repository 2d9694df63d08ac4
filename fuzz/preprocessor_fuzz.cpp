// The template preprocessor over any text, with a few directives defined: it either processes the
// text or throws its own error, and agrees with the reference preprocessor it replaced.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "fuzz/fuzz_input.h"
#include "preprocessor/reference_comparison.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  tsaw::TDefines defines;
  defines.Add("ddUseTLG", "1");
  defines.Add("ddLogComments", "0");
  defines.Add("ddTarget_D7W32", "1");
  const std::string difference =
      tsaw::reference::DifferenceFromReference(tsaw::fuzz::AsText(data, size), defines, true);
  if (!difference.empty()) {
    std::fprintf(stderr, "%s\n", difference.c_str());
    std::abort();
  }
  return 0;
}
