// Text decoding: any bytes decode to UTF-8, and encoding the text back in the encoding it was
// read in gives the same bytes; splitting into lines and joining them loses no text.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "fuzz/fuzz_input.h"
#include "model/text_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes = tsaw::fuzz::AsText(data, size);
  const tsaw::TTextFile file = tsaw::DecodeText(bytes);
  if (tsaw::EncodeText(file.Text, file.Encoding) != bytes) std::abort();
  const std::vector<std::string> lines = tsaw::SplitLines(file.Text);
  const std::string joined = tsaw::JoinLines(lines);
  if (tsaw::SplitLines(joined) != lines) std::abort();
  return 0;
}
