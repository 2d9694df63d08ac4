#pragma once
// Whole files in and out, safely: only regular files are read (a FIFO or a device would block or
// never end), reads are bounded, and a written file is complete or untouched (temporary file in
// the same folder, then rename).

#include <cstddef>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tsaw {

// The largest file ReadFileBytes reads. Templates, Jobs and configurations are text a person
// writes; a larger one is refused rather than held in memory.
inline constexpr size_t kMostFileBytes = size_t{64} << 20;

// Reads a whole file as bytes; nullopt (with `error` set, when given, to a message naming the
// file and the reason) when it cannot be read, is a folder or not a regular file, or is larger
// than kMostFileBytes. Links are followed; the caller decides where they may lead.
std::optional<std::string> ReadFileBytes(const std::filesystem::path& path, std::string* error = nullptr);

// How a written file is put in place.
enum class TPlacement {
  // Through a temporary file beside it, renamed over it, so that its name never holds half of the
  // bytes. A replaced file keeps its permissions.
  Replace,
  // For a file that is most likely new: written with no name and then named, which spares the
  // rename; as Replace where the name is taken or the file system cannot do that.
  Fresh,
};

// Writes bytes to `path`, placed as `placement` says. False (with `error` set, when given, naming
// the file and the reason) on failure, and `path` is then as it was.
bool WriteFileBytes(const std::filesystem::path& path, std::string_view bytes, std::string* error = nullptr,
                    TPlacement placement = TPlacement::Replace);

// Takes bytes to write; false when they could not be written.
using TByteSink = std::function<bool(std::string_view bytes)>;
// Hands the bytes of a file to the sink, in order; false to give up, with `reason` set unless the
// sink failed (which sets it).
using TByteSource = std::function<bool(const TByteSink& write, std::string& reason)>;

// Writes the bytes `source` gives, replacing the file as WriteFileBytes does; when it gives up,
// `path` is as it was.
bool WriteFileFrom(const std::filesystem::path& path, const TByteSource& source, std::string* error = nullptr);

// Copies a regular file's bytes to `dest` the same way, with the source's permissions; any size.
// False (with `error` set) when the source is not a regular file or either side fails.
bool CopyFileBytes(const std::filesystem::path& source, const std::filesystem::path& dest,
                   std::string* error = nullptr, TPlacement placement = TPlacement::Replace);

}  // namespace tsaw
