// Expansion with the circular-reference check over a random table: the first pieces of the input
// are values of variables (fixed ones and custom ones), the last is the text. The check must end,
// and afterwards every full expansion must end within its bounds.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "fuzz/fuzz_input.h"
#include "model/answer_check.h"
#include "model/expand.h"
#include "model/ini_file.h"
#include "model/startup.h"
#include "model/variables.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  std::vector<std::string> pieces = tsaw::fuzz::Pieces(tsaw::fuzz::AsText(data, size));
  const std::string text = pieces.back();
  pieces.pop_back();
  tsaw::TWizard wizard;
  tsaw::Init_Variables(wizard);
  std::string custom = "[Custom Variables]\n";
  for (size_t i = 0; i < pieces.size(); ++i) {
    const uint16_t v = static_cast<uint16_t>(1 + (i * 7) % tsaw::kFixedVariableCount);
    if (i % 3 == 2) {
      custom += "C" + std::to_string(i) + "=" + pieces[i] + "\n";
    } else {
      wizard.Variables[v].Value = pieces[i];
      wizard.Variables[v].IdfValue = i % 2 ? pieces[i] : tsaw::Str2Idf(pieces[i]);
    }
  }
  tsaw::Custom_or_Lookup_Variables(wizard, tsaw::TIniFile::FromText(custom), false);
  // A run checks once and refuses what is left. (Checking again need not come clean: a cycle
  // through identifier values survives, as only the value is made harmless.)
  tsaw::AnyCvrError(wizard, nullptr);
  std::string result;
  tsaw::ExpandVar(wizard, text, false, result);
  if (result.size() > tsaw::ExpansionLimitFor(text)) std::abort();
  tsaw::FirstAnswerBeyondBounds(wizard);
  return 0;
}
