// The catalogue scan with validation on a large templates folder: 2,000 templates in 200
// folders, each template with a source subtree that the scan must not enter.

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "model/wizard.h"
#include "templates/catalogue.h"

namespace {

namespace fs = std::filesystem;

// A temporary templates folder, removed at exit.
class LargeTemplatesFolder {
 public:
  LargeTemplatesFolder() {
    std::string pattern = (fs::temp_directory_path() / "tsaw-bench-XXXXXX").string();
    if (!mkdtemp(pattern.data())) std::abort();
    root_ = pattern;
    for (int folder = 0; folder < 200; ++folder) {
      for (int t = 0; t < 10; ++t) WriteTemplate(folder, t);
    }
  }
  ~LargeTemplatesFolder() {
    std::error_code ignored;
    fs::remove_all(root_, ignored);
  }
  std::string Path() const { return root_.string() + "/"; }

 private:
  void WriteTemplate(int folder, int t) const {
    const fs::path dir = root_ / ("Folder " + std::to_string(folder)) / ("Template " + std::to_string(t));
    fs::create_directories(dir / "Delphi 7" / "Win32" / "Host");
    const int number = folder * 10 + t;
    std::ofstream(dir / "Template.ini")
        << "[Template]\r\nName=Template " << number << "\r\nPrefix=T" << number % 1000
        << "\r\nAuthor=Bench\r\nPurpose=Scale\r\nDesc=First line \xB6 second line\r\nPluginCount="
        << (number % 50 == 0 ? "abc" : "3") << "\r\n[Default Values]\r\nProduct.Name=P\r\n";
  }

  fs::path root_;
};

void BM_ScanAndValidate2000Templates(benchmark::State& state) {
  static const LargeTemplatesFolder folder;
  tsaw::TWizard wizard;
  wizard.TemplatesFolder = folder.Path();
  tsaw::TCatalogue catalogue(wizard);
  for (auto _ : state) {
    catalogue.Refresh_Tree();
    benchmark::DoNotOptimize(catalogue.TemplateCount());
  }
  state.counters["templates"] = catalogue.TemplateCount();
  state.counters["bad"] = catalogue.BadCount();
}
BENCHMARK(BM_ScanAndValidate2000Templates)->Unit(benchmark::kMillisecond);

}  // namespace
