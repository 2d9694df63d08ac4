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

// Writes bytes, replacing the file: they go to a temporary file in the same folder, which is then
// renamed over `path`, so `path` never holds half of them. A replaced file keeps its permissions.
// False (with `error` set, when given, naming the file and the reason) on failure, and `path` is
// then as it was.
bool WriteFileBytes(const std::filesystem::path& path, std::string_view bytes, std::string* error = nullptr);

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
                   std::string* error = nullptr);

}  // namespace tsaw
