#include "generations/snapshot.h"

#include <sys/stat.h>

#include <stdexcept>

#include "model/file_bytes.h"
#include "model/text_file.h"

namespace tsaw::generations {
namespace fs = std::filesystem;

void CheckRecordableSize(std::string_view file, uintmax_t size) {
  if (size > kMaxGenerationFileBytes) {
    throw std::runtime_error("'" + std::string(file) + "' is larger than " +
                             std::to_string(kMaxGenerationFileBytes >> 20) + " MB");
  }
  // The bound of every whole-file read, in its words.
  if (size > kMostFileBytes) {
    throw std::runtime_error("Cannot read \"" + std::string(file) + "\": it is larger than " +
                             std::to_string(kMostFileBytes >> 20) + " MB");
  }
}

void CheckRecordableCount(const fs::path& folder, size_t count) {
  if (count >= kMaxGenerationFiles) {
    throw std::runtime_error("'" + folder.string() + "' holds more than " + std::to_string(kMaxGenerationFiles) +
                             " files");
  }
}

std::string ReadRegularFile(const fs::path& file) {
  // The link itself, not what it leads to: one call gives both the type and the size.
  struct stat status {};
  if (::lstat(file.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) {
    throw std::runtime_error("'" + file.string() + "' is not a regular file");
  }
  CheckRecordableSize(file.native(), static_cast<uintmax_t>(status.st_size));
  std::string error;
  std::optional<std::string> bytes = ReadFileBytes(file, &error);
  if (!bytes) throw std::runtime_error(error);
  return std::move(*bytes);
}

TFiles SnapshotFolder(const fs::path& folder, TObjectPack& pack) {
  TFiles files;
  std::error_code io;
  fs::recursive_directory_iterator it(folder, io), end;
  if (io) throw std::runtime_error("'" + folder.string() + "' cannot be read: " + io.message());
  for (; it != end; it.increment(io)) {
    if (io) throw std::runtime_error("'" + folder.string() + "' cannot be read: " + io.message());
    if (!it->is_regular_file(io) || it->is_symlink(io)) continue;
    CheckRecordableCount(folder, files.size());
    files[it->path().lexically_relative(folder).generic_string()] =
        pack.Add(GIT_OBJECT_BLOB, ReadRegularFile(it->path()));
  }
  return files;
}

}  // namespace tsaw::generations
