#pragma once
// The record kept for every folder and template of the catalogue, the kinds of template error with
// their names and messages, and the validation of one template's "Template.ini".

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "model/wizard.h"

namespace tsaw {

struct TCatalogueNode;  // templates/catalogue.h

// Kinds of template error, in table order. Kinds 2 and 3 have names and messages but no check
// reports them: the prefix's form is not verified.
enum TTemplateError : uint8_t {
  errUndefined = 0,
  errFieldMissingFromTemplateSection = 1,
  errInvalidPrefix = 2,
  errPrefixMismatch = 3,
  errInvalidPluginCount = 4,
};
inline constexpr int kTemplateErrorCount = 5;

// The kinds' names as the page shows them, and their message formats ("%s" filled in order;
// lines joined by CR LF, no final line break). Entry 0 is empty in both.
extern const std::array<const char*, kTemplateErrorCount> kTemplateErrorNames;
extern const std::array<const char*, kTemplateErrorCount> kTemplateErrorMessages;

// One node of the template tree: a folder or a template. Created zero-filled by Alloc_Info.
struct TTemplateInfo {
  TCatalogueNode* Node = nullptr;  // the node that shows this record
  bool IsTemplate = false;         // the folder holds "Template.ini"
  bool IsFolder = false;           // a plain folder
  std::string FolderName;
  std::string FolderPath;  // with a trailing separator
  bool IsValid = false;
  TTemplateError ErrorKind = errUndefined;  // kind of the last failure
  int32_t TemplateCount = 0;                // for a folder: templates below it, at any depth
  std::string Prefix;
  std::string IniFile;      // FolderPath + "Template.ini"
  std::string PartialPath;  // FolderPath without its trailing separator: the template's identity
  std::string ErrorMessage;  // message of the first failure
  std::string Author;
  std::string Purpose;
  std::string Description;  // CR LF separated lines
  uint16_t PluginCount = 0;
  // Why "Template.ini" is there but could not be read; the validation reads such a file as empty,
  // and the command line tells the user this in place of the missing keys.
  std::string ReadError;
  // Read-only marks by variable number; numbers past the end are not read-only.
  std::vector<bool> ReadOnly;
};

// A new zero-filled record shown by `node`.
std::shared_ptr<TTemplateInfo> Alloc_Info(TCatalogueNode* node);

// Reads the "Template" section of info.IniFile and fills Prefix, Author, Purpose, Description,
// PluginCount, IsValid, ErrorKind and ErrorMessage; returns IsValid. Every check runs even after a
// failure. Never throws: an exception is logged with the step it happened in and the result is
// IsValid as it stood then. A missing or unreadable file reads as having no keys; for a file
// that is there but cannot be read, ReadError says why.
bool Validate(TTemplateInfo& info);

// True when "Default Values" marked variable `var_idx` read-only for this template.
bool IsReadOnly(const TTemplateInfo& info, uint16_t var_idx);

}  // namespace tsaw
