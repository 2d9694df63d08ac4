#include "jobs/job_writer.h"

#include <array>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "model/targets.h"
#include "model/text_file.h"
#include "platform/debug_log.h"
#include "platform/folder_access.h"
#include "templates/template_paths.h"
#include "templates/template_info.h"

namespace tsaw {
namespace {

constexpr std::string_view kCrLf = "\r\n";
constexpr std::string_view kPilcrow = " \xC2\xB6 ";  // " ¶ ", how a line break stays on one INI line
constexpr std::string_view kUtf8Bom = "\xEF\xBB\xBF";

constexpr std::array<uint16_t, 1> kNameBlockVars = {viPluginProjectName};
constexpr std::array<uint16_t, 5> kPropertyBlockVars = {viPluginVersion, viPluginAuthor, viPluginDeepName,
                                                        viPluginCopyright, viPluginDescription};
constexpr std::array<uint16_t, 6> kCommonTextsBeforeNames = {viProductName, viCompanyName, viCopyright,
                                                             viAuthor, viProjectsPrefix, viHostProjectName};
constexpr std::array<uint16_t, 7> kCommonTextsBeforeProperties = {
    viManagerVersion, viManagerAuthor, viManagerDeepName, viManagerCopyright,
    viManagerPluginExtension, viManagerPluginFolder, viManagerServiceFolder};
constexpr std::array<uint16_t, 6> kFlags = {viLoggingUseTLG, viLoggingLogComments, viLoggingLogInitFinit,
                                            viLoggingLogPinCreation, viLoggingLogFunctionResults,
                                            viCosmeticCommentedHeaders};

void ReplaceFirst(std::string& text, std::string_view from, std::string_view to) {
  const size_t at = text.find(from);
  if (at != std::string::npos) text.replace(at, from.size(), to);
}

void ReplaceAll(std::string& text, std::string_view from, std::string_view to) {
  for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

std::string Placeholder(uint16_t var_idx) { return std::string("#Job.") + kFixedVariableNames[var_idx] + "#"; }

// A value on one INI line. Bare LF or CR breaks (typed on this platform) would split the line
// and lose the rest on reading back, so they become pilcrows as well.
std::string TextForm(std::string value) {
  ReplaceAll(value, kCrLf, kPilcrow);
  ReplaceAll(value, "\n", kPilcrow);
  ReplaceAll(value, "\r", kPilcrow);
  return value;
}

std::string ValueOf(const TWizard& wizard, uint16_t var_idx) {
  return var_idx < wizard.Variables.size() ? wizard.Variables[var_idx].Value : std::string();
}

std::string PluginValueOf(const TWizard& wizard, uint16_t var_idx, size_t plugin) {
  if (var_idx >= wizard.Variables.size()) return {};
  const auto& pins = wizard.Variables[var_idx].Pins;
  return plugin < pins.size() && pins[plugin] ? pins[plugin]->Value : std::string();
}

// Lines from the first one that, trimmed, begins with ";;;;"; none when there is no such line.
std::vector<std::string> WithoutPreamble(std::vector<std::string> lines) {
  for (size_t i = 0; i < lines.size(); ++i) {
    const size_t start = lines[i].find_first_not_of(" \t");
    if (start != std::string::npos && lines[i].compare(start, 4, ";;;;") == 0) {
      lines.erase(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(i));
      return lines;
    }
  }
  return {};
}

// Takes the block's lines out of `lines` and returns its body joined by CR LF; nullopt when the
// begin marker is missing (then nothing is taken). A missing end marker ends the block at the end.
std::optional<std::string> CutBlock(std::vector<std::string>& lines, std::string_view name) {
  const std::string begin = "{BeginOfBlock " + std::string(name) + "}";
  const std::string end = "{EndOfBlock " + std::string(name) + "}";
  size_t first = 0;
  while (first + 1 < lines.size() && lines[first] != begin) ++first;
  if (first + 1 >= lines.size()) return std::nullopt;
  std::string body;
  size_t last = first + 1;
  for (; last < lines.size() && lines[last] != end; ++last) {
    if (last > first + 1) body += kCrLf;
    body += lines[last];
  }
  if (last == lines.size()) --last;
  const auto at = [&lines](size_t i) { return lines.begin() + static_cast<std::ptrdiff_t>(i); };
  lines.erase(at(first), at(last + 1));
  return body;
}

template <size_t N>
std::string RepeatBlock(const TWizard& wizard, const std::optional<std::string>& body,
                        const std::array<uint16_t, N>& vars) {
  if (!body) return {};
  const size_t plugins = wizard.SelectedTemplate ? wizard.SelectedTemplate->PluginCount : 0;
  std::string result;
  for (size_t n = 1; n <= plugins; ++n) {
    std::string text = *body;
    ReplaceAll(text, "[n]", "[" + std::to_string(n) + "]");
    for (uint16_t var : vars) ReplaceFirst(text, Placeholder(var), TextForm(PluginValueOf(wizard, var, n)));
    if (n > 1) result += kCrLf;
    result += text;
  }
  ReplaceAll(result, "\r\n\r\n", kCrLf);
  return result;
}

// Every placeholder with its answer, in the order in which they are replaced.
std::vector<std::pair<std::string, std::string>> Answers(const TWizard& wizard, std::string names_block,
                                                         std::string properties_block) {
  std::vector<std::pair<std::string, std::string>> answers = {{"#Job.ODS#", "001"},
                                                              {"#Job.Template#", TemplatePathOf(wizard, wizard.SelectedTemplatePath)}};
  const auto add_text = [&](uint16_t var) { answers.emplace_back(Placeholder(var), TextForm(ValueOf(wizard, var))); };
  for (uint16_t var : kCommonTextsBeforeNames) add_text(var);
  answers.emplace_back("#Job.Plugin.ProjectName#", std::move(names_block));
  for (uint16_t var : kCommonTextsBeforeProperties) add_text(var);
  answers.emplace_back("#Job.Plugin.Properties#", std::move(properties_block));
  const auto add_target = [&](uint16_t target) {
    answers.emplace_back("#Job." + std::string(TargetInfo(target).DefaultsKey) + "#",
                         wizard.Targets[target].Checked ? "1" : "0");
  };
  add_target(kTargetCount);
  for (uint16_t target = 1; target < kTargetCount; ++target) add_target(target);
  for (uint16_t var : kFlags) answers.emplace_back(Placeholder(var), ValueOf(wizard, var) == "True" ? "1" : "0");
  add_text(viOutputBaseFolder);
  return answers;
}

}  // namespace

std::string Fill_Job_Model(const TWizard& wizard, std::string_view model_text) {
  if (model_text.starts_with(kUtf8Bom)) model_text.remove_prefix(kUtf8Bom.size());
  std::vector<std::string> lines = WithoutPreamble(SplitLines(model_text));
  const std::optional<std::string> names_body = CutBlock(lines, "Job.Plugin.ProjectName");
  std::string names_block = RepeatBlock(wizard, names_body, kNameBlockVars);
  const std::optional<std::string> properties_body = CutBlock(lines, "Job.Plugin.Properties");
  std::string properties_block = RepeatBlock(wizard, properties_body, kPropertyBlockVars);
  std::string text = JoinLines(lines);
  for (const auto& [placeholder, answer] : Answers(wizard, std::move(names_block), std::move(properties_block))) {
    ReplaceFirst(text, placeholder, answer);
  }
  return text;
}

std::string Check_Job_File(const TWizard& wizard, const std::filesystem::path& job_file, TOverwrite overwrite) {
  std::error_code error;
  const std::filesystem::path folder = job_file.parent_path().empty() ? "." : job_file.parent_path();
  if (!std::filesystem::is_directory(folder, error)) {
    return "Job not saved: the folder of \"" + job_file.string() + "\" does not exist.";
  }
  if (const std::string why = platform::WhyFolderCannotTakeFiles(folder); !why.empty()) {
    return "Job not saved: " + why + ".";
  }
  if (std::filesystem::is_directory(job_file, error)) {
    return "Job not saved: \"" + job_file.string() + "\" is a folder.";
  }
  if (overwrite == TOverwrite::Refuse && std::filesystem::exists(std::filesystem::symlink_status(job_file, error))) {
    return "Job not saved: \"" + job_file.string() + "\" already exists and was left as it is.";
  }
  const std::filesystem::path model = std::filesystem::path(wizard.JobsFolder) / kJobModelFileName;
  if (!std::filesystem::is_regular_file(model, error)) return "Job Model could not be loaded:\r\n\r\n" + model.string();
  return {};
}

std::string Save_Job(const TWizard& wizard, const std::filesystem::path& job_file, TOverwrite overwrite) {
  platform::ScopedRoutine routine("TSaW_frmCreation.TfrmCreation.btnSaveJob_OnClick");
  if (std::string refusal = Check_Job_File(wizard, job_file, overwrite); !refusal.empty()) return refusal;
  const std::filesystem::path model = std::filesystem::path(wizard.JobsFolder) / kJobModelFileName;
  const std::optional<std::string> model_bytes = ReadFileBytes(model);
  if (!model_bytes) return "Job Model could not be loaded:\r\n\r\n" + model.string();
  const std::string text = Fill_Job_Model(wizard, DecodeText(*model_bytes).Text);
  std::string write_error;
  if (!WriteFileBytes(job_file, text, &write_error)) return "Job not saved: " + write_error;
  return {};
}

std::filesystem::path Proposed_Job_File(const TWizard& wizard) {
  if (!wizard.ActiveJobFile.empty() && wizard.JobValuesApplied) return wizard.ActiveJobFile;
  return std::filesystem::path(wizard.JobsFolder) / kDefaultJobFileName;
}

}  // namespace tsaw
