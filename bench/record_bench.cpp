// What recording a creation costs a processor, without the run: the object pack of a new
// generation store taking 5,000 files of 8 KB (37.5 MB, the creation benchmark's size) as the
// recorder takes them, from hashing each to completing the last pack and its index. Each
// iteration writes into a store of its own.

#include <benchmark/benchmark.h>
#include <git2.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "generations/store.h"

namespace {

namespace fs = std::filesystem;
using tsaw::generations::TGenerationStore;

constexpr int kFiles = 5000;
constexpr size_t kFileBytes = 7500;

// Texts that differ from one another, as the files of a Project Set do.
std::vector<std::string> Files() {
  std::vector<std::string> files;
  for (int i = 0; i < kFiles; ++i) {
    std::string text = "unit Unit" + std::to_string(i) + ";\r\n";
    while (text.size() < kFileBytes) text += "  Line " + std::to_string(text.size() * 31 + i) + " of the unit;\r\n";
    files.push_back(std::move(text));
  }
  return files;
}

void BM_RecordFilesIntoANewStore(benchmark::State& state) {
  static const std::vector<std::string> files = Files();
  std::string pattern = (fs::temp_directory_path() / "tsaw-bench-XXXXXX").string();
  if (!mkdtemp(pattern.data())) std::abort();
  const fs::path root = pattern;
  // As during a recorded run, libgit2 stays started between stores.
  git_libgit2_init();
  int round = 0;
  for (auto _ : state) {
    std::string error;
    auto store = TGenerationStore::Open(root / "state", root / ("Set " + std::to_string(round++)), true, error);
    if (!store) std::abort();
    auto pack = store->NewPack();
    for (const std::string& file : files) benchmark::DoNotOptimize(pack.Add(GIT_OBJECT_BLOB, file));
    if (!pack.Write(error)) std::abort();
  }
  git_libgit2_shutdown();
  fs::remove_all(root);
  size_t bytes = 0;
  for (const std::string& file : files) bytes += file.size();
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * bytes));
}
BENCHMARK(BM_RecordFilesIntoANewStore)->Unit(benchmark::kMillisecond);

}  // namespace
