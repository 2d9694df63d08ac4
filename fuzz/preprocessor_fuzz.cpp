// The template preprocessor over any text, with a few directives defined: it either processes the
// text or throws its own error.

#include <cstddef>
#include <cstdint>

#include "fuzz/fuzz_input.h"
#include "preprocessor/model_processor.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  tsaw::TqrxModelProcessor processor;
  tsaw::TDefines defines;
  defines.Add("ddUseTLG", "1");
  defines.Add("ddLogComments", "0");
  defines.Add("ddTarget_D7W32", "1");
  try {
    processor.ProcessText(tsaw::fuzz::AsText(data, size), defines, true);
  } catch (const tsaw::TPreprocessorError&) {
  }
  return 0;
}
