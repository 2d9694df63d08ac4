#pragma once
// Shared set-up of the creation run tests: a small template in a temporary folder, a wizard that
// has selected it, and an observer that can abort the run at a chosen point.

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "creation/creation_run.h"
#include "model/wizard.h"
#include "testing/recording_trash.h"
#include "testing/temp_dir.h"

namespace tsaw::creation::testing_support {

// Identities "DCI-<n>", numbered per generator.
class NumberedDci : public TDciGenerator {
 public:
  std::string NewDci(const TDciRequest&) override { return "DCI-" + std::to_string(++calls_); }

 private:
  int calls_ = 0;
};

// Calls `on_pump` at every pump point, with the task label as it stands, and keeps the report
// lines it is told.
class ScriptedObserver : public TRunObserver {
 public:
  void ReportLine(const std::string& line) override { lines.push_back(line); }
  void TaskChanged(const std::string& new_task) override { task = new_task; }
  void Pump() override {
    ++pumps;
    if (on_pump) on_pump(task);
  }
  std::function<void(const std::string& task)> on_pump;
  std::string task;
  int pumps = 0;
  std::vector<std::string> lines;
};

// A temporary root with the template "Demo" (prefix T101, two plug-ins) selected, only target
// Delphi 7 for Win32 checked, and the output under <tmp>/out.
class DemoSetup {
 public:
  DemoSetup();
  TWizard wizard;
  tsaw::testing::TempDir dir;
  tsaw::testing::RecordingTrash trash;
  NumberedDci dci;
  ScriptedObserver observer;

  std::filesystem::path Out() const { return dir.path() / "out"; }
  TRunServices Services() { return {{"Tessera Wizard", "6.01"}, &trash, &dci, {}, dir.path() / "home"}; }
  // Every file below `folder`, by path relative to it, with its bytes.
  static std::map<std::string, std::string> Tree(const std::filesystem::path& folder);
  // Sets a variable as the start-up does: value, default and identifier value.
  void SetVariable(uint16_t var_idx, const std::string& value);
};

}  // namespace tsaw::creation::testing_support
