// The identity renewal of a form file over any lines.

#include <cstddef>
#include <cstdint>
#include <string>

#include "creation/dci.h"
#include "fuzz/fuzz_input.h"
#include "model/text_file.h"

namespace {

class CountingDci : public tsaw::creation::TDciGenerator {
 public:
  std::string NewDci(const tsaw::creation::TDciRequest&) override { return "DCI-" + std::to_string(++calls_); }

 private:
  int calls_ = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::vector<std::string> lines = tsaw::SplitLines(tsaw::DecodeText(tsaw::fuzz::AsText(data, size)).Text);
  CountingDci dci;
  tsaw::creation::RenewDci(lines, "Delphi 7/Win32/Host/Main.dfm", dci, [](const std::string&) {});
  return 0;
}
