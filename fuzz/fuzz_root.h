#pragma once
// Shared by the harnesses that read files: a framework root in a temporary folder, made once per
// process, with one template whose files a harness rewrites for every input.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include "model/variables.h"
#include "model/wizard.h"

namespace tsaw::fuzz {

class FuzzRoot {
 public:
  FuzzRoot() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tsaw-fuzz-XXXXXX").string();
    if (!mkdtemp(pattern.data())) std::abort();
    path_ = pattern;
    Write(TemplateFile("Template.ini"), kTemplateIni);
  }
  ~FuzzRoot() {
    std::error_code ec;
    std::filesystem::remove_all(path_, ec);
  }
  const std::filesystem::path& path() const { return path_; }
  std::string WizardFolder() const { return (path_ / "TSA/Wizard").string() + "/"; }
  std::string TemplatesFolder() const { return WizardFolder() + "Templates/"; }
  std::filesystem::path TemplateFile(std::string_view relative) const {
    return std::filesystem::path(TemplatesFolder()) / "Apps/Tiny" / relative;
  }
  std::filesystem::path Out() const { return path_ / "out"; }

  static void Write(const std::filesystem::path& file, std::string_view bytes) {
    std::filesystem::create_directories(file.parent_path());
    std::ofstream(file, std::ios::binary | std::ios::trunc).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  }
  // A wizard with the root's folders and a fresh variable table.
  TWizard MakeWizard() const {
    TWizard wizard;
    wizard.WizardFolder = WizardFolder();
    wizard.TemplatesFolder = TemplatesFolder();
    wizard.JobsFolder = WizardFolder() + "Jobs/";
    Init_Variables(wizard);
    return wizard;
  }

  // A valid template: prefix T001, Delphi 7 for Win32.
  static constexpr std::string_view kTemplateIni =
      "[Template]\nName=Tiny\nPrefix=T001\nAuthor=a\nPurpose=p\nDesc=d\nPluginCount=2\n"
      "[Default Values]\nProduct.Name=Rocket\nProjects.Prefix=Acme\nDelphi.7.Win32=R\n";

 private:
  std::filesystem::path path_;
};

}  // namespace tsaw::fuzz
