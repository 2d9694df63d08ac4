#pragma once
// Test helper: a fresh temporary folder, removed with everything in it when the object dies,
// and a builder that writes files into it.

#include <filesystem>
#include <string>
#include <string_view>

namespace tsaw::testing {

class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::filesystem::path& path() const { return path_; }

  // Writes `content` to `relative` below the folder, creating parent folders. Returns the full path.
  std::filesystem::path Write(std::string_view relative, std::string_view content) const;
  // Creates the folder `relative` (and its parents). Returns the full path.
  std::filesystem::path MakeDir(std::string_view relative) const;
  // Reads a file below the folder as bytes; empty when missing.
  std::string Read(std::string_view relative) const;

 private:
  std::filesystem::path path_;
};

}  // namespace tsaw::testing
