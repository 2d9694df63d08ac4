#include "creation/ide_handoff.h"

#include <algorithm>

#include "model/expand.h"
#include "model/targets.h"
#include "platform/debug_log.h"

namespace tsaw::creation {
namespace {

// The hand-off always speaks to the first IDE of the catalogue.
constexpr uint16_t kIdeIndex = 1;
constexpr const char* kIdeShortName = "D5";

std::string DdeService(uint16_t ide) {
  if (ide >= 1 && ide <= 3) return "DELPHI32";
  if (ide == 6 || ide == 9 || ide == 12 || ide == 15) return "bds";
  return {};
}

std::string GroupExtension(uint16_t ide) {
  if (ide >= 1 && ide <= 3) return "bpg";
  if (ide == 6 || ide == 9 || ide == 15) return "bdsgroup";
  if (ide == 12) return "groupproj";
  return {};
}

std::string SingleBackslashes(std::string text) {
  for (auto at = text.find("\\\\"); at != std::string::npos; at = text.find("\\\\", at)) text.erase(at, 1);
  return text;
}

// Ten pump-and-advance steps of the gauge, from `first` on.
void AdvanceGauge(TRunObserver& observer, int32_t first) {
  for (int32_t position = first; position < first + 10; ++position) {
    observer.Pump();
    observer.GaugeChanged(30, position);
  }
}

}  // namespace

std::string IdeRegistryKey(const std::string& short_name) {
  const std::string number = short_name.substr(std::min(short_name.find_first_of("0123456789"), short_name.size()));
  if (number.empty() || number.size() > 4) return {};
  const int value = std::stoi(number);
  if (value < 8) return "\\Software\\Borland\\Delphi\\" + number + ".0";
  if (value == 8) return "\\Software\\Borland\\BDS\\2.0";
  if (number.size() < 4) return {};
  return "\\Software\\Borland\\BDS\\" + std::to_string(number[3] - '0' + 4 - 6) + ".0";
}

std::string GroupFileName(const TWizard& wizard, const std::string& short_name, uint16_t ide_index) {
  return ExpandVar(wizard, "vrProjects_Prefix " + short_name + " Win32." + GroupExtension(ide_index));
}

void OpenProjects(const TWizard& wizard, const std::filesystem::path& project_set, platform::Ide& ide,
                  TRunObserver& observer) {
  platform::ScopedRoutine routine("TSaW_frmCreation.TfrmCreation.btnOpen_OnClick");
  using platform::MessageKind;
  if (!ide.InsideIde()) {
    ide.ShowMessage(MessageKind::Information, " This feature is not available outside the IDE. ");
    return;
  }
  observer.TaskChanged("loading project group...");
  observer.GaugeChanged(30, 0);
  AdvanceGauge(observer, 1);
  if (!wizard.Targets[kIdeIndex].Checked) {
    ide.ShowMessage(MessageKind::Error, " This IDE language (" + std::string(TargetInfo(kIdeIndex).Name) +
                                            ") has not been target by the project set created. ");
    observer.TaskChanged("idle.");
    return;
  }
  auto conversation = ide.NewConversation();
  conversation->SetLink(DdeService(kIdeIndex), "system");
  AdvanceGauge(observer, 11);
  conversation->SetServiceApplication(
      SingleBackslashes(ide.ReadMachineRegistry(IdeRegistryKey(kIdeShortName), "App")));
  if (!conversation->OpenLink()) {
    ide.ShowMessage(MessageKind::Error, " DDE Conversation with the IDE could not be estabilished. ");
    observer.TaskChanged("idle.");
    return;
  }
  AdvanceGauge(observer, 21);
  const std::filesystem::path group = project_set / GroupFileName(wizard, kIdeShortName, kIdeIndex);
  const bool sent = conversation->ExecuteMacro("[open(\"" + group.string() + "\")]");
  if (!sent) ide.ShowMessage(MessageKind::Error, " DDE macro to the IDE failed to execute. ");
  conversation->CloseLink();
  if (sent) {
    observer.Pump();
    ide.RaiseWindow("TsaDesktop.frmMain");
  }
  observer.TaskChanged("idle.");
}

}  // namespace tsaw::creation
