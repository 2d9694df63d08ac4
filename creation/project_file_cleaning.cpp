#include "creation/project_file_cleaning.h"

#include <cctype>

#include "platform/runtime_text.h"
#include "platform/debug_log.h"

namespace tsaw::creation {
namespace {

constexpr const char* kWizardNames[] = {"ddTemplate",       "ddCommentedHeaders", "ddUseTLG",
                                        "ddLogComments",    "ddLogInitFinit",     "ddLogPinCreation",
                                        "ddLogFunctionResults"};

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
  for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size())) {
    text.replace(at, from.size(), to);
  }
}

std::string TrimBlanks(const std::string& text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// Drops `open` and the first `close` from the trimmed line.
std::string CutTags(const std::string& line, const std::string& open, const std::string& close) {
  std::string text = TrimBlanks(line);
  ReplaceAll(text, open, "");
  if (const auto at = text.find(close); at != std::string::npos) text.erase(at, close.size());
  return text;
}

// The found entry: the text, and how to write a cleaned text back.
struct DefinesEntry {
  std::string text;
  std::vector<std::size_t> rows;  // lines to rewrite
  std::string lead_in;
  bool found = false;
};

DefinesEntry FindCfg(const std::vector<std::string>& lines) {
  DefinesEntry entry;
  for (std::size_t i = lines.size(); i-- > 0;) {
    const std::string& line = lines[i];
    if (line.size() >= 2 && line[0] == '-' && std::tolower(static_cast<unsigned char>(line[1])) == 'd') {
      entry = {line.substr(2), {i}, {}, true};
      break;
    }
  }
  return entry;
}

DefinesEntry FindDof(const std::vector<std::string>& lines) {
  DefinesEntry entry;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const auto equals = lines[i].find('=');
    const std::string name = lines[i].substr(0, equals == std::string::npos ? 0 : equals);
    if (platform::SameText(name, "Conditionals")) return {lines[i].substr(equals + 1), {i}, {}, true};
  }
  return entry;
}

DefinesEntry FindTagged(const std::vector<std::string>& lines, const std::string& open,
                        const std::string& close, bool every_line) {
  DefinesEntry entry;
  for (std::size_t i = lines.size(); i-- > 0;) {
    const auto at = lines[i].find(open);
    if (at == std::string::npos) continue;
    entry.rows.push_back(i);
    entry.text = CutTags(lines[i], open, close);
    entry.lead_in = lines[i].substr(0, at);
    entry.found = true;
    if (!every_line) break;
  }
  return entry;
}

const char* kBdsOpen = "<Directories Name=\"Conditionals\">";

DefinesEntry FindEntry(const std::vector<std::string>& lines, const std::string& ext) {
  if (ext == ".cfg") return FindCfg(lines);
  if (ext == ".dof") return FindDof(lines);
  if (ext == ".bdsproj") return FindTagged(lines, kBdsOpen, "</Directories>", false);
  if (ext == ".dproj") return FindTagged(lines, "<DCC_Define>", "</DCC_Define>", true);
  return {};
}

std::string Rewritten(const std::string& ext, const DefinesEntry& entry, const std::string& text) {
  if (ext == ".cfg") return "-D" + text;
  if (ext == ".dof") return "Conditionals=" + text;
  if (ext == ".bdsproj") return entry.lead_in + kBdsOpen + text + "</Directories>";
  return entry.lead_in + "<DCC_Define>" + text + "</DCC_Define>";
}

}  // namespace

std::string CleanDefines(std::string text) {
  for (const char* name : kWizardNames) ReplaceAll(text, name, "");
  while (text.find(";;") != std::string::npos) ReplaceAll(text, ";;", ";");
  const auto first = text.find_first_not_of(';');
  if (first == std::string::npos) return {};
  return text.substr(first, text.find_last_not_of(';') - first + 1);
}

void Remove_Template_Directives(std::vector<std::string>& lines, const std::string& file_ext,
                                const std::function<void(const std::string&)>& report) {
  platform::ScopedRoutine routine("TSaW_frmCreation.TfrmCreation.Remove_Template_Directives");
  report("      Removing Directives from the " + file_ext + " file...");
  const DefinesEntry entry = FindEntry(lines, file_ext);
  if (!entry.found || entry.text.empty()) {
    platform::DebugLine("Entry not found in the " + file_ext + " text.");
    return;
  }
  report("      Old line: '" + entry.text + "'");
  const std::string cleaned = CleanDefines(entry.text);
  report("      New line: '" + cleaned + "'");
  const std::string line = Rewritten(file_ext, entry, cleaned);
  for (const std::size_t row : entry.rows) {
    if (row >= lines.size()) {
      platform::DebugLine("var \"idx\" undefined or invalid.  idx: " + std::to_string(row) +
                          "  Stg.Count: " + std::to_string(lines.size()));
      continue;
    }
    lines[row] = line;
    if (platform::DebugEnabled()) platform::DebugLine("Entry replaced in " + file_ext + " text:  '" + line + "'");
  }
}

}  // namespace tsaw::creation
