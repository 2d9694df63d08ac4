#pragma once
// The user interface's modal dialogs as a service: asking for a file to open or save, asking a
// question and telling the user something. Pages ask through this so that tests can answer in place of a person.

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

// The answers of a question with the buttons OK and Abort.
enum class TAnswer { Ok, Abort };

// What a message is, as its box's icon shows it.
enum class TMessageKind { Information, Warning, Error };

class Dialogs {
 public:
  virtual ~Dialogs() = default;
  // Asks for an existing file; nullopt when the user cancels.
  virtual std::optional<std::string> AskOpenFile(const TFileDialogRequest& request) = 0;
  // Asks for a file to save to in an existing folder; when the chosen file exists the user is
  // asked whether to replace it. nullopt when the user cancels.
  virtual std::optional<std::string> AskSaveFile(const TFileDialogRequest& request) = 0;
  // Asks `question` with the buttons OK and Abort and waits; closing the box counts as OK.
  virtual TAnswer AskOkAbort(std::string_view question) = 0;
  // Shows `message` with the icon of its `kind` and a single OK button, and waits for it.
  virtual void ShowMessage(TMessageKind kind, std::string_view message) = 0;
};

}  // namespace tsaw::platform
