// tsaw validate DIR: validates the "Template.ini" of one template folder and prints the result as
// the Template Selection page's validation tab shows it.

#include <filesystem>
#include <iostream>
#include <memory>
#include <string>

#include "app/command.h"
#include "model/file_bytes.h"
#include "templates/template_info.h"

namespace tsaw::app {
namespace {

int RunValidate(std::string folder) {
  while (folder.size() > 1 && folder.back() == '/') folder.pop_back();
  std::error_code ec;
  if (!std::filesystem::exists(folder, ec)) {
    std::cerr << "tsaw: validate: " << folder << ": no such folder\n";
    return kExitFailed;
  }
  if (!std::filesystem::is_directory(folder, ec)) {
    std::cerr << "tsaw: validate: " << folder << ": not a folder; give the template's folder\n";
    return kExitFailed;
  }
  TTemplateInfo info;
  info.FolderPath = folder + "/";
  info.IniFile = info.FolderPath + "Template.ini";
  // A Template.ini that is there but cannot be read (a FIFO, a device, no permission) says so.
  std::string unreadable;
  if (std::filesystem::exists(info.IniFile, ec) && !ReadFileBytes(info.IniFile, &unreadable)) {
    std::cerr << "tsaw: validate: " << unreadable << "\n";
    return kExitFailed;
  }
  if (!std::filesystem::is_regular_file(info.IniFile, ec)) {
    std::cerr << "tsaw: validate: " << folder << ": holds no Template.ini, so it is no template\n";
  }
  if (Validate(info)) {
    std::cout << "Template is ok\n";
    return kExitOk;
  }
  std::cout << "Error\n" << kTemplateErrorNames[info.ErrorKind] << "\n" << info.ErrorMessage << "\n";
  return kExitFailed;
}

}  // namespace

Command MakeValidateCommand() {
  return {"validate", "Check the Template.ini of one template folder",
          [](CLI::App& sub, const GlobalOptions&) -> std::function<int()> {
            auto folder = std::make_shared<std::string>();
            sub.add_option("DIR", *folder, "The template's folder (the one holding Template.ini)")
                ->required();
            return [folder] { return RunValidate(*folder); };
          }};
}

}  // namespace tsaw::app
