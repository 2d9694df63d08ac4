// ExpandVar over a 64 KB Delphi-like text with a reference about every 200 bytes, with the fixed
// variables and 1, 20 or 999 plug-ins; the text refers to no plug-in variable or to several. The
// table is prepared once, as a creation run prepares it for all its files.

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

#include "model/expand.h"
#include "model/variables.h"

namespace tsaw {
namespace {

constexpr size_t kTextSize = 64 * 1024;

TWizard MakeWizard(uint16_t plugin_count) {
  TWizard wizard;
  Init_Variables(wizard);
  wizard.RunData = std::make_unique<TRunData>();
  wizard.RunData->PluginCount = plugin_count;
  wizard.PluginIndex = 1;
  for (uint16_t v = 1; v <= kFixedVariableCount; ++v) {
    TVariableItem& variable = wizard.Variables[v];
    variable.Value = "Value of " + variable.Name;
    variable.IdfValue = Str2Idf(variable.Value);
    if (!variable.IsPluginArray) continue;
    ResizePinSubArray(variable, plugin_count);
    for (uint16_t n = 1; n <= plugin_count; ++n) {
      variable.Pins[n]->Value = variable.Value + " " + std::to_string(n);
      variable.Pins[n]->IdfValue = Str2Idf(variable.Pins[n]->Value);
    }
  }
  return wizard;
}

// Ordinary Delphi source between the references, with the '#' of character literals.
constexpr const char* kFiller[] = {
    "procedure TfrmMain.btnOk_OnClick(Sender: TObject);\r\n",
    "var\r\n  Index: Integer;\r\nbegin\r\n",
    "  ShowMessage('Done' + #13#10 + 'with ' + IntToStr(Index));\r\n",
    "  for Index := 0 to Pred(FItems.Count) do\r\n    FItems[Index].Free;\r\nend;\r\n\r\n",
};

std::string MakeText(bool plugin_references) {
  const char* const plain[] = {"#Product.Name#", "vrProjects_Prefix", "#Author#", "#Copyright#",
                               "vrHost_ProjectName", "#Manager.Version#", "#Output.BaseFolder#"};
  const char* const plugin[] = {"#Plugin.Version#", "vrPlugin_ProjectName", "#Plugin[1].Author#",
                                "#Plugin.Description#", "vrPlugin1_Source_Prefix", "#Product.Name#"};
  std::string text;
  for (size_t i = 0; text.size() < kTextSize; ++i) {
    for (size_t k = 0; k < 3; ++k) text += kFiller[(i + k) % 4];  // about 200 bytes a reference
    text += "  // ";
    text += plugin_references ? plugin[i % 6] : plain[i % 7];
    text += "\r\n";
  }
  return text;
}

void BM_ExpandVar(benchmark::State& state) {
  const TWizard wizard = MakeWizard(static_cast<uint16_t>(state.range(0)));
  const std::string text = MakeText(state.range(1) != 0);
  const TExpansionTable table(wizard);
  std::string res;
  for (auto _ : state) {
    ExpandVar(table, text, false, res);
    benchmark::DoNotOptimize(res.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
// The same texts through a one-off expansion, which prepares no table and takes the passes:
// how fast expansion was before the single scan.
void BM_ExpandVarOneOff(benchmark::State& state) {
  const TWizard wizard = MakeWizard(static_cast<uint16_t>(state.range(0)));
  const std::string text = MakeText(state.range(1) != 0);
  std::string res;
  for (auto _ : state) {
    ExpandVar(wizard, text, false, res);
    benchmark::DoNotOptimize(res.data());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_ExpandVarOneOff)
    ->ArgNames({"plugins", "plugin_refs"})
    ->Args({1, 0})
    ->Args({999, 0})
    ->Args({999, 1})
    ->Unit(benchmark::kMicrosecond);

BENCHMARK(BM_ExpandVar)
    ->ArgNames({"plugins", "plugin_refs"})
    ->Args({1, 0})
    ->Args({20, 0})
    ->Args({999, 0})
    ->Args({1, 1})
    ->Args({20, 1})
    ->Args({999, 1})
    ->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace tsaw
