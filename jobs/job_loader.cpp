#include "jobs/job_loader.h"

#include <exception>
#include <system_error>

#include "model/ini_file.h"
#include "platform/debug_log.h"
#include "templates/template_paths.h"

namespace tsaw {
namespace {

constexpr const char* kLoadRoutine = "TSaW_frmWelcome.TfrmWelcome.btnStartFromJob_OnClick";

bool TemplateExists(const std::string& partial_path) {
  std::error_code ignored;
  return std::filesystem::is_regular_file(std::filesystem::path(partial_path) / "Template.ini", ignored);
}

// Step 30: the selected template path from "Job"/Template, or the message saying why there is none.
std::string SelectJobTemplate(TWizard& wizard, const TIniFile& job, const std::string& file_name) {
  const std::string value = job.ReadString("Job", "Template");
  const std::string relative = RelativeTemplatePath(value);
  std::string message;
  if (value.empty()) {
    message = "Job not loaded: \"" + file_name + "\" names no template ([Job] Template is missing or empty).";
  } else if (relative.empty()) {
    message = "Job not loaded: the template \"" + value + "\" named in \"" + file_name +
              "\" lies outside the templates folder \"" + wizard.TemplatesFolder + "\".";
  } else if (!TemplateExists(wizard.TemplatesFolder + relative)) {
    message = "Job not loaded: the template \"" + value + "\" named in \"" + file_name +
              "\" was not found in the templates folder \"" + wizard.TemplatesFolder + "\".";
  } else {
    wizard.SelectedTemplatePath = wizard.TemplatesFolder + relative;
  }
  if (platform::DebugEnabled()) {
    platform::DebugLine("TplPartialPath [" + value + "]  ActTplName: ]" + wizard.SelectedTemplatePath + "]");
  }
  return message;
}

}  // namespace

std::string Load_Job(TWizard& wizard, const std::filesystem::path& job_file) {
  platform::ScopedRoutine routine(kLoadRoutine);
  int step = 10;
  std::string message;
  try {
    wizard.SelectedTemplate.reset();
    wizard.ActiveJobFile = job_file.string();
    wizard.SelectedTemplatePath.clear();
    step = 20;
    const TIniFile job = TIniFile::Load(job_file);
    step = 30;
    if (!job.Error().empty()) {
      message = "Job not loaded: " + job.Error();
    } else {
      message = SelectJobTemplate(wizard, job, wizard.ActiveJobFile);
    }
    step = 40;
    if (wizard.SelectedTemplatePath.empty()) wizard.ActiveJobFile.clear();
    step = 50;
    wizard.JobValuesApplied = false;
  } catch (const std::exception& error) {
    message = platform::ExceptionLine(kLoadRoutine, step, error.what());
    platform::DebugLine(message);
  }
  return message;
}

void Close_Job(TWizard& wizard) {
  platform::ScopedRoutine routine("TSaW_frmTemplates.TfrmTemplates.btnCloseJob_OnClick");
  wizard.ActiveJobFile.clear();
  wizard.JobValuesApplied = false;
  wizard.LastAppliedTemplatePath.clear();
}

}  // namespace tsaw
