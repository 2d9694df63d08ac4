#include "generations/record.h"

#include <stdexcept>

#include "generations/template_fingerprint.h"
#include "jobs/job_writer.h"
#include "model/text_file.h"
#include "platform/xdg_folders.h"
#include "templates/template_info.h"

namespace tsaw::generations {
namespace fs = std::filesystem;

std::optional<fs::path> StateFolder() {
  const std::optional<fs::path> state = platform::XdgStateHome();
  if (!state) return std::nullopt;
  return *state / "tsaw";
}

TGenerationMeta MetaWithoutFingerprint(const TWizard& wizard, const std::string& kind) {
  TGenerationMeta meta{kind, {}, {}, {}};
  if (wizard.SelectedTemplate) meta.Template = wizard.SelectedTemplate->PartialPath;
  if (const auto model = ReadFileBytes(fs::path(wizard.JobsFolder) / kJobModelFileName)) {
    meta.Job = Fill_Job_Model(wizard, DecodeText(*model).Text);
  }
  return meta;
}

TGenerationMeta MetaOf(const TWizard& wizard, const std::string& kind) {
  TGenerationMeta meta = MetaWithoutFingerprint(wizard, kind);
  if (wizard.SelectedTemplate) meta.Fingerprint = TemplateFingerprint(wizard.SelectedTemplate->FolderPath);
  return meta;
}

bool HasRecordedGeneration(const fs::path& project_set) {
  const std::optional<fs::path> state = StateFolder();
  std::string error;
  auto store = state ? TGenerationStore::Open(*state, project_set, false, error) : nullptr;
  try {
    return store && store->HasBase();
  } catch (const std::exception&) {
    return false;
  }
}

}  // namespace tsaw::generations
