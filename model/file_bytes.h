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

// A new file written in two steps, which may run apart (later, or on another thread): Fill does
// what no one can see, filling a file with no name in the destination's folder; Show names it,
// and only then is it seen. Together they do what WriteFileBytes and CopyFileBytes do with
// TPlacement::Fresh, with the same errors. A file filled and never shown vanishes with this
// object.
class TFreshFile {
 public:
  // Writes `bytes`, which must stay as they are until Show.
  static TFreshFile OfBytes(std::filesystem::path path, std::string_view bytes);
  // Copies the regular file `source`, with its permissions.
  static TFreshFile CopyOf(std::filesystem::path source, std::filesystem::path path);
  TFreshFile(TFreshFile&& other) noexcept;
  TFreshFile& operator=(TFreshFile&&) = delete;
  ~TFreshFile();

  // Once; a failure is kept for Show to report.
  void Fill();
  // Fills the file first if Fill was not called. False (with `error` set, when given, naming the
  // file and the reason) on failure, and `path` is then as it was.
  bool Show(std::string* error = nullptr);

 private:
  TFreshFile() = default;
  bool FillInto(int fd, std::string& reason);
  bool ShowBeside(std::string* error);
  bool Fail(std::string* error) const;

  enum class TState { New, Filled, Failed, NoUnnamedFile };
  std::filesystem::path source_;  // for a copy
  std::filesystem::path path_;
  std::string_view bytes_;        // for bytes
  bool copy_ = false;
  unsigned mode_ = 0;
  int in_ = -1;   // the source, open
  int out_ = -1;  // the unnamed file, filled
  TState state_ = TState::New;
  std::string reason_;
};

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
