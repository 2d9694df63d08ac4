// The walk over the template's files, as a run visits them: entries whose name begins with "." and
// "TplHelper" folders are left out, every other folder is entered, since some run may write it.

#include <filesystem>

#include "creation/file_processing.h"
#include "lint/checks.h"
#include "model/text_file.h"
#include "platform/folder_listing.h"
#include "platform/runtime_text.h"

namespace tsaw::lint {
namespace fs = std::filesystem;
namespace {

// Of the extensions the run skips, those of files an author may well mean to ship; the others
// (".dcu", ".dsk", ".identcache", ".~1~" ...) are the IDE's own and rightly left behind.
constexpr std::string_view kShippableSkipped = " .exe .dll .tsa .vrm ";
// Files that make up a host or plug-in project; the run renames them by the template's prefix.
constexpr std::string_view kProjectFiles = " .dpr .dproj .bdsproj .dof .cfg .res .bpg .bdsgroup .groupproj ";

bool InList(std::string_view list, const std::string& extension) {
  return !extension.empty() && list.find(" " + extension + " ") != std::string_view::npos;
}

struct TEntry {
  std::string name;
  bool folder = false;
};

// The folder's entries to check; links to files and other kinds of entry are named and left
// unread, links to folders are passed over.
std::vector<TEntry> Entries(TLintContext& context, const fs::path& folder, const std::string& relative) {
  std::error_code ec;
  std::vector<TEntry> entries;
  for (const platform::TFolderEntry& entry : platform::ListFolder(folder, ec)) {
    if (fs::is_directory(entry.Status)) {
      if (!platform::SameText(entry.Name, "TplHelper")) entries.push_back({entry.Name, true});
    } else if (fs::is_regular_file(entry.Status)) {
      entries.push_back({entry.Name, false});
    } else if (std::error_code type_ec; !fs::is_symlink(entry.Status) || !fs::is_directory(folder / entry.Name, type_ec)) {
      context.Add(relative + entry.Name, 0, TSeverity::Warning, "is not a regular file: the lint does not read it");
    }
  }
  if (ec) context.Add(relative, 0, TSeverity::Error, "the folder could not be read: " + ec.message());
  return entries;
}

void CheckText(TLintContext& context, const fs::path& path, const std::string& file) {
  std::error_code ec;
  const std::uintmax_t size = fs::file_size(path, ec);
  if (!ec && size > kMaxLintedFileBytes) {
    context.Add(file, 0, TSeverity::Warning,
                "is larger than " + std::to_string(kMaxLintedFileBytes >> 20) + " MB: its text is not checked");
    return;
  }
  std::string error;
  const auto bytes = ReadFileBytes(path, &error);
  if (!bytes) {
    context.Add(file, 0, TSeverity::Error, "could not be read: " + error);
    return;
  }
  if (creation::LowerExtension(file) == ".dfm" && creation::BinaryFormBytes(*bytes)) {
    context.Add(file, 1, TSeverity::Error, "is a binary form: a run refuses it (only text forms are supported)");
    return;
  }
  const TTextFile text = DecodeText(*bytes);
  const std::size_t first = context.findings.size();
  if (creation::DirectiveAwareFile(file)) CheckDirectives(context, file, text.Text);
  CheckReferences(context, file, text.Text);
  context.SortByLine(first);
}

void CheckFile(TLintContext& context, const fs::path& path, const std::string& file, const std::string& prefix) {
  const std::string name = path.filename().string();
  const std::string extension = creation::LowerExtension(name);
  if (creation::SkippedFile(name)) {
    if (extension.empty()) {
      context.Add(file, 0, TSeverity::Warning, "has no extension: a run never writes it");
    } else if (InList(kShippableSkipped, extension)) {
      context.Add(file, 0, TSeverity::Warning, "has the extension " + extension + ", which a run skips: it is never written");
    }
    return;
  }
  if (!prefix.empty() && InList(kProjectFiles, extension) && !name.starts_with(prefix)) {
    context.Add(file, 0, TSeverity::Error,
                "project file whose name does not start with the template's prefix \"" + prefix + "\" (errPrefixMismatch)");
  }
  if (creation::ExpandableFile(name)) CheckText(context, path, file);
}

void Walk(TLintContext& context, const fs::path& folder, const std::string& relative, const std::string& prefix) {
  for (const TEntry& entry : Entries(context, folder, relative)) {
    if (context.Full()) return;
    if (entry.folder) {
      Walk(context, folder / entry.name, relative + entry.name + "/", prefix);
    } else {
      CheckFile(context, folder / entry.name, relative + entry.name, prefix);
    }
  }
}

}  // namespace

void CheckTree(TLintContext& context, const std::string& prefix) { Walk(context, context.folder, "", prefix); }

}  // namespace tsaw::lint
