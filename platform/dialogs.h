#pragma once
// The user interface's modal dialogs as a service: asking for a file to open and telling the user
// something. Pages ask through this so that tests can answer in place of a person.

#include <optional>
#include <string>
#include <string_view>

namespace tsaw::platform {

// What an open-file dialog shows. `Filter` is written as pairs "description|patterns|..." (for
// example "Job files (Job*.ini)|Job*.ini|All files (*.*)|*.*").
struct TFileDialogRequest {
  std::string Title;
  std::string Filter;
  std::string DefaultExt;  // added to a typed name that has no extension
  std::string FileName;    // proposed name
  std::string Folder;      // where the dialog opens
};

class Dialogs {
 public:
  virtual ~Dialogs() = default;
  // Asks for an existing file; nullopt when the user cancels.
  virtual std::optional<std::string> AskOpenFile(const TFileDialogRequest& request) = 0;
  // Shows `message` with a single OK button and waits for it.
  virtual void ShowMessage(std::string_view message) = 0;
};

}  // namespace tsaw::platform
