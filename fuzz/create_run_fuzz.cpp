// A creation run over a small template made from the input: the first piece is added to the
// template's default values, each further piece becomes a file of the next kind in the list, at
// the template's top and in its Delphi 7 Win32 Host folder. The run must end, and must write
// nothing outside its Project Set folder.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "creation/creation_run.h"
#include "creation/dci.h"
#include "fuzz/fuzz_input.h"
#include "fuzz/fuzz_root.h"
#include "templates/catalogue.h"

namespace {
namespace fs = std::filesystem;

class CountingDci : public tsaw::creation::TDciGenerator {
 public:
  std::string NewDci(const tsaw::creation::TDciRequest&) override { return "DCI-" + std::to_string(++calls_); }

 private:
  int calls_ = 0;
};

class RemovingTrash : public tsaw::platform::Trash {
 public:
  bool MoveToTrash(const fs::path& folder, std::string& error) override {
    std::error_code ec;
    fs::remove_all(folder, ec);
    if (ec) error = ec.message();
    return !ec;
  }
};

constexpr const char* kFileNames[] = {"T001_Host.dpr", "Main.pas", "Main.dfm", "T001_Host.dproj", "T001_Host.cfg",
                                      "ReadMe.txt",    "Res.rc",   "Inc.inc",  "T001_Host.dof",   "Data.bin"};

void WriteTemplate(const tsaw::fuzz::FuzzRoot& root, const std::vector<std::string>& pieces) {
  std::error_code ec;
  fs::remove_all(root.TemplateFile(""), ec);
  fs::remove_all(root.Out(), ec);
  tsaw::fuzz::FuzzRoot::Write(root.TemplateFile("Template.ini"),
                              std::string(tsaw::fuzz::FuzzRoot::kTemplateIni) + "Output.BaseFolder=" +
                                  root.Out().string() + "\n" + pieces[0]);
  for (size_t i = 1; i < pieces.size() && i <= 2 * std::size(kFileNames); ++i) {
    const std::string name = kFileNames[(i - 1) % std::size(kFileNames)];
    const std::string folder = i <= std::size(kFileNames) ? "" : "Delphi 7/Win32/Host/";
    tsaw::fuzz::FuzzRoot::Write(root.TemplateFile(folder + name), pieces[i]);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static const tsaw::fuzz::FuzzRoot root;
  WriteTemplate(root, tsaw::fuzz::Pieces(tsaw::fuzz::AsText(data, size)));
  tsaw::TWizard wizard = root.MakeWizard();
  tsaw::TCatalogue catalogue(wizard);
  catalogue.Refresh_Tree();
  try {
    catalogue.Select(catalogue.Find_Node(root.TemplatesFolder() + "Apps/Tiny"));
  } catch (const std::length_error&) {
    return 0;
  }
  if (!wizard.SelectedTemplate) return 0;
  for (uint16_t target = 1; target < wizard.Targets.size(); ++target) wizard.Targets[target].Checked = target == 3;
  RemovingTrash trash;
  CountingDci dci;
  tsaw::creation::TRunObserver observer;
  tsaw::creation::TCreationRun run(wizard, {{"Tessera Wizard", "6.01"}, &trash, &dci, {}, root.path() / "home"},
                                   observer);
  run.Start(false);
  // Nothing may appear beside the template, the output folder and the report.
  for (const auto& entry : fs::directory_iterator(root.path())) {
    const std::string name = entry.path().filename().string();
    if (name != "TSA" && name != "out") std::abort();
  }
  return 0;
}
