#pragma once
// Taking a folder's files into the generation store: every regular file below it, read as bytes.

#include <filesystem>
#include <string>

#include "generations/object_pack.h"
#include "generations/store.h"

namespace tsaw::generations {

// Limits on what one generation may hold.
inline constexpr size_t kMaxGenerationFiles = 200000;
inline constexpr uintmax_t kMaxGenerationFileBytes = 256ull << 20;

// Adds the content of every regular file below `folder` to `pack` and returns them by path.
// Links, devices and other files that are not regular are never read and not recorded. Throws
// std::runtime_error, naming the file, when a file cannot be read or a limit is passed.
TFiles SnapshotFolder(const std::filesystem::path& folder, TObjectPack& pack);

// Reads `file` as bytes, refusing files that are not regular or pass the size limits. Throws
// std::runtime_error naming the file.
std::string ReadRegularFile(const std::filesystem::path& file);

// Refuses one more file for a generation of `folder` that holds `count` already, when that passes
// the file-count limit: throws std::runtime_error naming the folder.
void CheckRecordableCount(const std::filesystem::path& folder, size_t count);

// Refuses `file` of `size` bytes, as ReadRegularFile would, when it passes the size limits:
// throws std::runtime_error naming the file.
void CheckRecordableSize(std::string_view file, uintmax_t size);

}  // namespace tsaw::generations
