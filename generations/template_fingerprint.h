#pragma once
// A digest of the names, sizes and change times of every regular file below a template folder,
// taken a few entries at a time so that the recorder can take it while it has nothing else to do.

#include <dirent.h>

#include <filesystem>
#include <string>
#include <vector>

namespace tsaw::generations {

class TTemplateFingerprint {
 public:
  explicit TTemplateFingerprint(const std::filesystem::path& folder);
  ~TTemplateFingerprint();
  TTemplateFingerprint(const TTemplateFingerprint&) = delete;
  TTemplateFingerprint& operator=(const TTemplateFingerprint&) = delete;

  // Looks at up to `entries` more folder entries; false once every folder has been read.
  bool Step(size_t entries);
  // The digest, after reading whatever is left. Links are not followed; a folder that cannot be
  // read adds nothing.
  std::string Digest();

 private:
  struct TOpenFolder {
    DIR* Handle;
    std::string Relative;  // below the template, ending in '/' unless it is the template itself
  };
  void Enter(int fd, std::string relative);

  std::vector<TOpenFolder> open_;
  std::vector<std::string> lines_;
};

// The whole walk at once.
std::string TemplateFingerprint(const std::filesystem::path& folder);

}  // namespace tsaw::generations
