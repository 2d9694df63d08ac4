// The INI reader over any text, and every section and key it reports read back.

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "fuzz/fuzz_input.h"
#include "model/ini_file.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const tsaw::TIniFile ini = tsaw::TIniFile::FromText(tsaw::fuzz::AsText(data, size));
  for (const char* section : {"Template", "Default Values", "Custom Variables", "Lookup Variables", "Job"}) {
    for (const auto& [key, value] : ini.ReadSection(section)) {
      if (!ini.ValueExists(section, key)) std::abort();
    }
  }
  return 0;
}
