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
BENCHMARK(BM_Execute)->Arg(1 << 10)->Arg(64 << 10)->Arg(1 << 20)->Arg(16 << 20)->Unit(benchmark::kMillisecond);

// ProcessText, as the creation run calls it, on `text`.
void ProcessTextOf(benchmark::State& state, const std::string& text) {
  tsaw::TqrxModelProcessor processor;
  processor.Defines.Add("ddUseTLG", "1");
  processor.Defines.Add("ddLogComments", "0");
  for (auto _ : state) {
    std::string out = processor.ProcessText(text, processor.Defines, true);
    benchmark::DoNotOptimize(out.data());
  }
  state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * text.size()));
}

// A unit of the given size in one text, as the creation run hands it over.
void BM_ProcessText(benchmark::State& state) {
  std::string text = "unit MainUnit;\r\n\r\ninterface\r\n\r\nimplementation\r\n\r\n";
  while (text.size() < static_cast<std::size_t>(state.range(0))) {
    for (const std::string& line : kProcedure) text.append(line).append("\r\n");
  }
  ProcessTextOf(state, text + "end.\r\n");
}
BENCHMARK(BM_ProcessText)
    ->Arg(1 << 10)
    ->Arg(64 << 10)
    ->Arg(1 << 20)
    ->Arg(16 << 20)
    ->Arg(100 << 20)
    ->Unit(benchmark::kMillisecond);

// Blocks one after the other, each on its own line.
void BM_BlocksInARow(benchmark::State& state) {
  std::string text;
  for (std::int64_t i = 0; i < state.range(0); ++i) {
    text += i % 2 ? "{$IFDEF ddUseTLG}\r\n  Log('x');\r\n{$ENDIF}\r\n" : "x := 1;{$IFNDEF ddLogComments} // c{$ENDIF}\r\n";
  }
  ProcessTextOf(state, text);
}
BENCHMARK(BM_BlocksInARow)->Arg(100000)->Unit(benchmark::kMillisecond);

// Blocks nested inside one another, as deep as the argument, around 64 KB of code.
void BM_Nested(benchmark::State& state) {
  std::string text;
  for (std::int64_t i = 0; i < state.range(0); ++i) text += i % 2 ? "{$IFDEF ddUseTLG}\r\n" : "{$IFNDEF ddLogComments}\r\n";
  while (text.size() < (64 << 10)) text += "  x := x + 1; // plain code inside the innermost block\r\n";
  for (std::int64_t i = 0; i < state.range(0); ++i) text += "{$ENDIF}\r\n";
  ProcessTextOf(state, text);
}
BENCHMARK(BM_Nested)->Arg(10)->Arg(100)->Arg(250)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace
