#include "creation/file_processing.h"

#include <optional>

#include "creation/dci.h"
#include "creation/file_in_flight.h"
#include "creation/file_names.h"
#include "creation/project_file_cleaning.h"
#include "model/expand.h"
#include "model/file_bytes.h"
#include "model/text_file.h"
#include "platform/debug_log.h"
#include "platform/runtime_text.h"

namespace tsaw::creation {
namespace fs = std::filesystem;
namespace {

constexpr const char* kSkippedExtensions =
    "  .exe .vrm .dll .tsa .dcu .map .drc .slx .dsk .bak .~1~ .~2~ .~3~ .~4~ .~5~ .~6~ .~7~ .~8~ "
    ".~9~ .dst .identcache .todo .tvsconfig ";
constexpr const char* kSkippedNames = "  template.ini ";
// ".inc" stands here beside the listed extensions so that include files reach the preprocessor.
constexpr const char* kExpandable =
    "  .dpr .pas .dfm .txt .ini .bpg .dof .cfg .rc .bat .bdsproj .bdsgroup .dproj .groupproj .inc ";
constexpr const char* kProjectSettings = "  .cfg .dof .bdsproj .dproj ";
constexpr const char* kDirectiveAware = "  .dpr .pas .inc ";

bool InList(const char* list, const std::string& item) {
  return std::string_view(list).find(" " + item + " ") != std::string_view::npos;
}

TFileOutcome Fail(TRunContext& run, const std::string& line) {
  run.Report(line);
  return TFileOutcome::Failed;
}

// The dry run's stand-in for writing `dest`.
TFileOutcome Planned(TRunContext& run, const fs::path& dest) {
  run.planned_files.push_back(dest.lexically_normal());
  return TFileOutcome::Processed;
}

TFileOutcome CopyPlain(TRunContext& run, const fs::path& source, const fs::path& dest) {
  run.Report("    Copying file '" + source.string() + "' to '" + dest.string() + "'...");
  if (run.dry_run) return Planned(run, dest);
  return CopyBehind(run, source, dest);
}

// The expansion of a file's text with the quoting its kind needs; nullopt, with the reason in the
// run's stop reason, when it breaks the expansion's bounds.
std::optional<std::string> Expanded(TRunContext& run, std::string text, const std::string& ext,
                                    const fs::path& source) {
  std::vector<std::string> pairs;
  if (ext == ".rc") {
    run.Report("      Replacing double-quotes while expanding variables...");
    pairs = {"\"", "\\042"};
  } else if (ext == ".dfm") {
    run.Report("      Replacing single-quotes while expanding variables...");
    pairs = {"'", "[ASingleQuote]", "[ASingleQuote]", "''"};
  } else {
    run.Report("      Expanding variables with no char replacement...");
  }
  // Every reference holds a '#' or an identifier token, which begins with "vr".
  if (text.find('#') == std::string::npos && text.find("vr") == std::string::npos) return text;
  std::string result;
  const TExpandOutcome outcome = ExpandVar(*run.expansion, text, false, result, pairs);
  if (outcome == TExpandOutcome::Complete) return result;
  run.stop_reason = ExpansionBoundMessage("'" + source.string() + "'", outcome, text.size());
  run.Report("      ERROR: " + run.stop_reason);
  return std::nullopt;
}

// The preprocessor's Execute on the lines of `text`, without splitting it into lines first.
// `text` ends every line in CR LF already, and the processor keeps them so.
std::string Preprocessed(TRunContext& run, const std::string& text) {
  if (text.empty()) return text;
  return run.processor->ProcessText(text, run.processor->Defines, true);
}

TFileOutcome ExpandFile(TRunContext& run, const fs::path& source, const fs::path& dest,
                        const std::string& ext) {
  std::string error;
  auto bytes = ReadFileBytes(source, &error);
  if (!bytes) return Fail(run, "      ERROR: File could not be read: " + error);
  if (ext == ".dfm" && BinaryFormBytes(*bytes)) {
    return Fail(run, "      ERROR: DFM is in binary format. Only text DFMs are supported: '" +
                         source.string() + "'");
  }
  TTextFile file = DecodeText(std::move(*bytes));
  std::optional<std::string> expanded = Expanded(run, std::move(file.Text), ext, source);
  if (!expanded) return TFileOutcome::Failed;
  std::string text = std::move(*expanded);
  platform::MakeCrLfLines(text);
  const bool settings = InList(kProjectSettings, ext);
  const bool form = ext == ".dfm" && MayHoldDciObject(text);
  if (settings || form) {
    std::vector<std::string> lines = SplitLines(text);
    const auto report = [&run](const std::string& line) { run.Report(line); };
    if (settings) Remove_Template_Directives(lines, ext, report);
    // The identity generator's sequence is the run's: it is not drawn on ahead of a pump point.
    if (form && !SettleFileInFlight(run)) return TFileOutcome::Aborted;
    if (form) RenewDci(lines, dest.lexically_relative(run.project_set).generic_string(), run.dci, report);
    text = JoinLines(lines);
  }
  const bool aware = InList(kDirectiveAware, ext);
  run.Report(std::string("      Is directive-aware? ") + YesNo(aware));
  // A directive-aware file is neither a settings file nor a form, so `text` still has the line
  // ends MakeCrLfLines gave it.
  if (aware) text = Preprocessed(run, text);
  if (run.aborted) return TFileOutcome::Aborted;
  run.Report("      Saving file to destination folder...");
  if (run.dry_run) return Planned(run, dest);
  // UTF-8 text is written as it stands; only Windows-1252 needs encoding back.
  std::string saved = file.Encoding == TTextEncoding::Utf8 ? std::move(text) : EncodeText(text, file.Encoding);
  return WriteBehind(run, dest, std::move(saved));
}

// Where the link `source` in the template leads when that is outside the template; empty
// otherwise.
std::string LinkOutsideTemplate(const TRunContext& run, const fs::path& source) {
  std::error_code ec;
  const fs::path target = fs::weakly_canonical(source, ec);
  const fs::path folder = fs::weakly_canonical(run.template_folder, ec);
  const fs::path relative = target.lexically_relative(folder);
  if (!ec && !relative.empty() && *relative.begin() != ".." && relative != ".") return {};
  return target.string();
}

// True when `name` is a plain file name that keeps a file of `dest_folder` inside the Project Set.
bool SafeName(const std::string& name, const TDestFolder& dest_folder) {
  if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos) return false;
  return dest_folder.Inside;
}

}  // namespace

std::string LowerExtension(const std::string& name) {
  const auto dot = name.rfind('.');
  return dot == std::string::npos ? std::string() : platform::LowerAscii(name.substr(dot));
}

bool SkippedFile(const std::string& name) {
  return InList(kSkippedExtensions, LowerExtension(name)) || InList(kSkippedNames, platform::LowerAscii(name));
}

bool ExpandableFile(const std::string& name) { return InList(kExpandable, LowerExtension(name)); }

bool DirectiveAwareFile(const std::string& name) { return InList(kDirectiveAware, LowerExtension(name)); }

bool BinaryFormBytes(const std::string& bytes) {
  const auto end = bytes.find_first_of("\r\n");
  return std::string_view(bytes).substr(0, end) == "\xFF";
}

TDestFolder DestFolderOf(const TRunContext& run, const fs::path& path) {
  const fs::path relative = path.lexically_normal().lexically_relative(run.project_set);
  return {path, !relative.empty() && *relative.begin() != ".."};
}

TFileOutcome Process_File(TRunContext& run, const fs::path& source, bool is_link, const TDestFolder& dest_folder) {
  platform::ScopedRoutine routine("TSaW_frmCreation.TfrmCreation.Process_File");
  if (const std::string outside = is_link ? LinkOutsideTemplate(run, source) : std::string(); !outside.empty()) {
    return Fail(run, "      ERROR: '" + source.string() + "' is a link to '" + outside +
                         "' outside the template; not followed.");
  }
  const std::string name = source.filename().string();
  if (!run.expansion) run.expansion = std::make_unique<TExpansionTable>(run.wizard);
  const std::string dest_name = ProjectFileName(*run.expansion, name);
  const fs::path dest = dest_folder.Path / dest_name;
  if (!SafeName(dest_name, dest_folder)) {
    return Fail(run, "      ERROR: The name '" + dest_name + "' made from '" + name +
                         "' would leave the Project Set folder; file not written.");
  }
  const std::string ext = LowerExtension(name);
  if (!InList(kExpandable, ext)) return CopyPlain(run, source, dest);
  return ExpandFile(run, source, dest, ext);
}

}  // namespace tsaw::creation
