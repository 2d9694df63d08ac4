#include "app/template_record_output.h"

namespace tsaw::app {
namespace {

nlohmann::json TextOrNull(const std::string& text) {
  return text.empty() ? nlohmann::json(nullptr) : nlohmann::json(text);
}

}  // namespace

std::string ReadableReason(const TTemplateInfo& record) {
  if (record.IsValid) return {};
  if (!record.ReadError.empty()) return record.ReadError;
  return record.ErrorMessage.substr(0, record.ErrorMessage.find_first_of("\r\n"));
}

nlohmann::ordered_json TemplateRecordJson(const TTemplateInfo& record, const std::string& path) {
  nlohmann::ordered_json object;
  object["path"] = path;
  object["valid"] = record.IsValid;
  object["error_kind"] = TextOrNull(record.IsValid ? std::string() : kTemplateErrorNames[record.ErrorKind]);
  object["reason"] = TextOrNull(ReadableReason(record));
  object["message"] = TextOrNull(record.IsValid ? std::string() : record.ErrorMessage);
  object["prefix"] = record.Prefix;
  object["author"] = record.Author;
  object["purpose"] = record.Purpose;
  object["description"] = record.Description;
  object["plugin_count"] = record.PluginCount;
  return object;
}

}  // namespace tsaw::app
