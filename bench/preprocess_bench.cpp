// Throughput of the template preprocessor over Delphi units of growing size; equal MB/s across the
// sizes shows that a run stays linear in the length of the file.

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "preprocessor/model_processor.h"

namespace {

// One procedure of a template unit, as template authors write them: dd blocks on their own lines
// and inside code, nested in an ordinary DEBUG block, and compiler directives left alone.
const std::vector<std::string> kProcedure = {
    "{$IFDEF ddUseTLG}",
    "procedure TfrmMain.LogStep(const Msg: string);",
    "begin",
    "  {$IFNDEF ddLogComments}// logging without comments{$ENDIF}",
    "  TesseraLogger.Write('TfrmMain.LogStep ' + Msg);",
    "end;",
    "{$ELSE}",
    "procedure TfrmMain.LogStep(const Msg: string);",
    "begin",
    "end;",
    "{$ENDIF}",
    "",
    "{$IFDEF DEBUG}",
    "procedure TfrmMain.Check;",
    "begin",
    "  {$IFDEF ddLogComments}{$DEFINE ddChecked}{$ENDIF}",
    "  Assert(Assigned(FPlugin)); {$R+}",
    "end;",
    "{$ENDIF}",
    "",
    "procedure TfrmMain.Work;",
    "var i: Integer;",
    "begin",
    "  for i := 0 to 10 do x := x + i;{$IFDEF ddLogComments} // counted{$ENDIF}",
    "end;",
    "",
};

std::vector<std::string> UnitOfSize(std::size_t bytes) {
  std::vector<std::string> lines = {"unit MainUnit;", "", "interface", "", "implementation", ""};
  std::size_t size = 0;
  while (size < bytes) {
    for (const std::string& line : kProcedure) {
      lines.push_back(line);
      size += line.size() + 2;
    }
  }
  lines.push_back("end.");
  return lines;
}

void BM_Execute(benchmark::State& state) {
  tsaw::TqrxModelProcessor processor;
  for (const char* name : {"ddTemplate", "ddUseTLG", "ddLogComments", "ddChecked"}) {
    processor.Defines.Add(name, "0");
  }
  processor.Defines.SetExisting("ddUseTLG", "1");
  processor.Input = UnitOfSize(static_cast<std::size_t>(state.range(0)));
  std::size_t bytes = 0;
  for (const std::string& line : processor.Input) bytes += line.size() + 2;
  for (auto _ : state) {
    benchmark::DoNotOptimize(processor.Execute());
    benchmark::DoNotOptimize(processor.Output.data());
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}
BENCHMARK(BM_Execute)->Arg(64 << 10)->Arg(256 << 10)->Arg(1 << 20)->Unit(benchmark::kMillisecond);

}  // namespace
