#pragma once
// How the command line shows one template's record: a one-line reason for a bad template, and the
// record's JSON object.

#include <nlohmann/json.hpp>

#include <string>

#include "templates/template_info.h"

namespace tsaw::app {

// Why the template is bad, in one line: the reason it could not be read, else the first line of
// its error message. Empty for a good template.
std::string ReadableReason(const TTemplateInfo& record);

// The record as JSON: "path" (as --template takes it), "valid", "error_kind", "reason",
// "message", "prefix", "author", "purpose", "description", "plugin_count".
nlohmann::ordered_json TemplateRecordJson(const TTemplateInfo& record, const std::string& path);

}  // namespace tsaw::app
