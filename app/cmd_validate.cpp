// tsaw validate DIR: validates the "Template.ini" of one template folder and prints the result as
// the Template Selection page's validation tab shows it.

#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

#include "app/command.h"
#include "app/template_record_output.h"
#include "model/ini_file.h"
#include "templates/template_info.h"

namespace tsaw::app {
namespace {

struct ValidateOptions {
  std::string folder;
  bool json = false;
};

// Why `folder` cannot be validated at all, or the empty text.
std::string WhyNoTemplateFolder(const std::string& folder) {
  std::error_code ec;
  if (!std::filesystem::exists(folder, ec)) return folder + ": no such folder";
  if (!std::filesystem::is_directory(folder, ec)) return folder + ": not a folder; give the template's folder";
  return {};
}

int PrintJson(const std::string& folder, const TTemplateInfo& info) {
  nlohmann::ordered_json doc;
  doc["folder"] = folder;
  doc.update(TemplateRecordJson(info, std::filesystem::path(folder).filename().string()));
  doc.erase("path");
  std::cout << doc.dump(2, ' ', false, nlohmann::json::error_handler_t::replace) << "\n";
  return info.IsValid ? kExitOk : kExitFailed;
}

int RunValidate(ValidateOptions options) {
  std::string& folder = options.folder;
  while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
  TTemplateInfo info;
  if (const std::string why = WhyNoTemplateFolder(folder); !why.empty()) {
    std::cerr << "tsaw: validate: " << why << "\n";
    info.ReadError = why;
    return options.json ? PrintJson(folder, info) : kExitFailed;
  }
  info.FolderPath = folder + "/";
  info.IniFile = info.FolderPath + "Template.ini";
  std::error_code ec;
  if (!std::filesystem::exists(std::filesystem::symlink_status(info.IniFile, ec))) {
    std::cerr << "tsaw: validate: " << folder << ": holds no Template.ini, so it is no template\n";
  }
  Validate(info);
  if (!info.ReadError.empty()) std::cerr << "tsaw: validate: " << info.ReadError << "\n";
  for (const std::string& warning : TIniFile::Load(info.IniFile).Warnings()) {
    std::cerr << "tsaw: warning: " << warning << "\n";
  }
  if (options.json) return PrintJson(folder, info);
  if (info.IsValid) {
    std::cout << "Template is ok\n";
    return kExitOk;
  }
  if (info.ReadError.empty()) {
    std::cout << "Error\n" << kTemplateErrorNames[info.ErrorKind] << "\n" << info.ErrorMessage << "\n";
  }
  return kExitFailed;
}

}  // namespace

Command MakeValidateCommand() {
  return {"validate", "Check the Template.ini of one template folder",
          [](CLI::App& sub, const GlobalOptions&) -> std::function<int()> {
            auto options = std::make_shared<ValidateOptions>();
            sub.add_option("DIR", options->folder, "The template's folder (the one holding Template.ini)")
                ->required();
            sub.add_flag("--json", options->json, "Print one JSON document in place of the text");
            return [options] { return RunValidate(*options); };
          }};
}

}  // namespace tsaw::app
