#include "testing/temp_dir.h"

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace tsaw::testing {

TempDir::TempDir() {
  std::string pattern = (std::filesystem::temp_directory_path() / "tsaw-test-XXXXXX").string();
  if (!mkdtemp(pattern.data())) throw std::runtime_error("cannot create a temporary folder");
  path_ = pattern;
}

TempDir::~TempDir() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path TempDir::Write(std::string_view relative, std::string_view content) const {
  const auto full = path_ / relative;
  std::filesystem::create_directories(full.parent_path());
  std::ofstream(full, std::ios::binary) << content;
  return full;
}

std::filesystem::path TempDir::MakeDir(std::string_view relative) const {
  const auto full = path_ / relative;
  std::filesystem::create_directories(full);
  return full;
}

std::string TempDir::Read(std::string_view relative) const {
  std::ifstream in(path_ / relative, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

}  // namespace tsaw::testing
