#include "templates/template_info.h"

#include <charconv>
#include <exception>
#include <filesystem>
#include <initializer_list>
#include <string_view>

#include "model/expand.h"
#include "model/ini_file.h"
#include "platform/debug_log.h"

namespace tsaw {

const std::array<const char*, kTemplateErrorCount> kTemplateErrorNames = {
    "",
    "errFieldMissingFromTemplateSection",
    "errInvalidPrefix",
    "errPrefixMismatch",
    "errInvalidPluginCount",
};

const std::array<const char*, kTemplateErrorCount> kTemplateErrorMessages = {
    "",
    "Template \"%s\" key is missing from INI \"Template\" section.\r\n"
    "\r\n"
    "Valid Example:\r\n"
    "  [Template]\r\n"
    "  %s=%s\r\n"
    "\r\n"
    "INI File:\r\n"
    "  %s",
    "Invalid Template Prefix \"%s\" in INI \"Template\" section.\r\n"
    "It should be 4-char length starting with \"T\"\r\n"
    "followed by a 3-digit number from 001 to 999.\r\n"
    "\r\n"
    "Valid Example:\r\n"
    "  [Template]\r\n"
    "  Prefix=T052\r\n"
    "\r\n"
    "INI File:\r\n"
    "  %s",
    "Prefix \"%s\" in INI \"Template\" section does not match project.\r\n"
    "All (host/plugin) project file names should start\r\n"
    "with the same prefix as the respective template's.\r\n"
    "\r\n"
    "For instance:\r\n"
    "  Template Prefix:  T037\r\n"
    "  Project files:    T037_*.*\r\n"
    "\r\n"
    "Project:\r\n"
    "  %s\r\n"
    "\r\n"
    "INI File:\r\n"
    "  %s",
    "Invalid Value \"%s\" for key \"PluginCount\" in INI file.\r\n"
    "This field requires a number from \"1\" to \"999\".\r\n"
    "\r\n"
    "Valid Example:\r\n"
    "  [Template]\r\n"
    "  PluginCount=%s\r\n"
    "\r\n"
    "INI File:\r\n"
    "  %s",
};

namespace {

constexpr const char* kRoutine = "TSaW_frmTemplates.TfrmTemplates.Validate";
constexpr std::string_view kSection = "Template";
constexpr std::string_view kPilcrow = "\xC2\xB6";  // "¶"
constexpr const char* kDescriptionExample =
    "Use this template to create Child form plugins for MDI Applications. \xC2\xB6 "
    "This 2nd line in description is just for test.";

// Fills the "%s" of `format` with `args` in order; a "%s" without an argument stays as it is.
std::string FormatMessage(std::string_view format, std::initializer_list<std::string_view> args) {
  std::string out;
  auto arg = args.begin();
  for (size_t i = 0; i < format.size(); ++i) {
    if (format[i] == '%' && i + 1 < format.size() && format[i + 1] == 's' && arg != args.end()) {
      out += *arg++;
      ++i;
    } else {
      out += format[i];
    }
  }
  return out;
}

// Records one failure: the kind is always the latest, the message the first one.
void Fail(TTemplateInfo& info, TTemplateError kind, std::string_view a, std::string_view b) {
  std::string message;
  if (kind == errFieldMissingFromTemplateSection) {
    message = FormatMessage(kTemplateErrorMessages[kind], {a, a, b, info.IniFile});
  } else if (kind == errInvalidPluginCount) {
    message = FormatMessage(kTemplateErrorMessages[kind], {a, b, info.IniFile});
  }
  info.IsValid = false;
  info.ErrorKind = kind;
  if (info.ErrorMessage.empty()) info.ErrorMessage = std::move(message);
}

// A whole decimal number with an optional sign; anything else (or out of range) gives -1.
int ParsePluginCount(std::string_view text) {
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (text.empty() || error != std::errc() || end != text.data() + text.size()) return -1;
  return value;
}

// Reads one required key; a missing or blank one is a failure of kind 1 named `shown_key`.
std::string RequireKey(TTemplateInfo& info, const TIniFile& ini, std::string_view key,
                       std::string_view shown_key, std::string_view example) {
  std::string value = ini.ReadString(kSection, key);
  if (value.empty()) Fail(info, errFieldMissingFromTemplateSection, shown_key, example);
  return value;
}

void ReadPluginCount(TTemplateInfo& info, const TIniFile& ini) {
  const std::string text = ini.ReadString(kSection, "PluginCount");
  if (text.empty()) {
    info.PluginCount = 1;
    return;
  }
  const int count = ParsePluginCount(text);
  if (count < 1 || count > 999) {
    Fail(info, errInvalidPluginCount, text, "\"1\"");
  } else {
    info.PluginCount = static_cast<uint16_t>(count);
  }
}

}  // namespace

std::shared_ptr<TTemplateInfo> Alloc_Info(TCatalogueNode* node) {
  auto info = std::make_shared<TTemplateInfo>();
  info->Node = node;
  return info;
}

bool Validate(TTemplateInfo& info) {
  platform::ScopedRoutine routine(kRoutine);
  int step = 10;
  try {
    info.IsValid = true;
    const TIniFile ini = TIniFile::Load(info.IniFile);
    if (!ini.Error().empty()) platform::DebugLine("  " + ini.Error());
    std::error_code ignored;
    const bool present = std::filesystem::exists(std::filesystem::symlink_status(info.IniFile, ignored));
    info.ReadError = present ? ini.Error() : std::string();
    step = 20;
    RequireKey(info, ini, "Name", "Name", "MDI Child form plugin");
    step = 30;
    info.Prefix = RequireKey(info, ini, "Prefix", "Prefix", "T052");
    step = 40;
    info.Author = RequireKey(info, ini, "Author", "Author", "J. Q. Sample");
    step = 50;
    info.Purpose = RequireKey(info, ini, "Purpose", "Purpose", "Child form for MDI Applications");
    step = 60;
    const std::string desc = RequireKey(info, ini, "Desc", "Description", kDescriptionExample);
    if (!desc.empty()) info.Description = Piped2Text(desc, kPilcrow);
    step = 70;
    ReadPluginCount(info, ini);
  } catch (const std::exception& error) {
    platform::DebugLine(platform::ExceptionLine(kRoutine, step, error.what()));
  }
  return info.IsValid;
}

bool IsReadOnly(const TTemplateInfo& info, uint16_t var_idx) {
  return var_idx < info.ReadOnly.size() && info.ReadOnly[var_idx];
}

}  // namespace tsaw
