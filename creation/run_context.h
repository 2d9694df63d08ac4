#pragma once
// The state one creation run shares between its driver, its walk and its file processing. Used
// only inside creation/.

#include <cstdint>
#include <deque>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "creation/background_writer.h"
#include "creation/dci.h"
#include "creation/report_lines.h"
#include "creation/run_observer.h"
#include "creation/written_files.h"
#include "model/expand.h"
#include "model/wizard.h"
#include "platform/trash.h"
#include "preprocessor/model_processor.h"

namespace tsaw::creation {

// A report line, or a step of the gauge, that the run made while a file was in flight.
struct THeldStep {
  bool gauge = false;
  std::string line;
};

// A file handed to the background writer whose end the run has not settled yet.
struct TFileInFlight {
  std::filesystem::path source;  // the template file, for a copy
  std::filesystem::path dest;
  std::string bytes;  // an expanded file's text as written; a copy's bytes stay in the kernel
  bool copy = false;
  std::vector<THeldStep> held;  // what the run made after handing this file over
};

struct TRunContext {
  TRunContext(TWizard& w, TRunObserver& o, TDciGenerator& d, platform::Trash& t)
      : wizard(w), observer(o), dci(d), trash(t) {}

  TWizard& wizard;
  TRunObserver& observer;
  TDciGenerator& dci;
  platform::Trash& trash;
  std::unique_ptr<TqrxModelProcessor> processor;
  // The variable table made ready for the files' expansions, once the run writes.
  std::unique_ptr<TExpansionTable> expansion;
  TWrittenFiles* written = nullptr;  // told of each file the processing pass writes, when set

  TReportLines report;
  std::string stop_reason;  // why the run stopped before finishing, for the command line
  TCounters counters;
  bool aborted = false;
  bool count_only = false;
  // The dry run's processing pass: the walk does all but create, move and write, and lists the
  // files it would write.
  bool dry_run = false;
  bool refused = false;  // the Project Set folder was refused before anything was touched
  std::filesystem::path moved_to_trash;  // the existing Project Set folder moved (dry run: to move) aside
  std::vector<std::filesystem::path> planned_files;  // dry run: the files a real run would write
  uint16_t step = 0;
  int32_t gauge_max = 100;
  int32_t gauge_position = 0;
  std::string task = "idle.";
  std::filesystem::path template_folder;  // the selected template, no trailing separator
  std::filesystem::path project_set;      // the Project Set folder, no trailing separator

  // While files are in flight the run goes on with the next ones, but what it would show of them
  // is held until the files before are settled (see file_in_flight.h).
  bool write_behind = true;             // or each file is written before the next is begun
  std::deque<TFileInFlight> in_flight;  // oldest first; a deque keeps each where it lies
  bool settling = false;                // a file's end is being shown: nothing is held
  std::unique_ptr<TBackgroundWriter> writer;  // last, so that it ends before what it reads

  bool Holding() const { return !in_flight.empty() && !settling; }
  void Report(const std::string& line = {}) {
    if (Holding()) {
      in_flight.back().held.push_back({false, line});
      return;
    }
    ShowLine(line);
  }
  // Report, and AdvanceGauge below, past the holding.
  void ShowLine(const std::string& line) {
    report.Add(line);
    observer.ReportLine(line);
  }
  void ShowCounters() { observer.CountersChanged(counters); }
  void SetGauge(int32_t max, int32_t position) {
    gauge_max = max;
    gauge_position = position;
    observer.GaugeChanged(max, position);
  }
  void AdvanceGauge() {
    if (Holding()) {
      in_flight.back().held.push_back({true, {}});
      return;
    }
    ShowGaugeStep();
  }
  void ShowGaugeStep() { observer.GaugeChanged(gauge_max, ++gauge_position); }
  void SetStatus(const std::string& message, const std::string& new_task) {
    observer.MessageChanged(message);
    SetTask(new_task);
  }
  void SetTask(const std::string& new_task) {
    task = new_task;
    observer.TaskChanged(new_task);
  }
  // Pumps the interface's messages; true when the run may go on.
  bool Pump() {
    observer.Pump();
    return !aborted;
  }
};

// The yes/no word of the report lines.
inline const char* YesNo(bool value) { return value ? "Yes" : "No"; }

}  // namespace tsaw::creation
