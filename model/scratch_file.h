#pragma once
// A file without a name, for bytes too many to keep in memory that are read back later.

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tsaw {

// An unnamed file in a folder: bytes are appended and read back from the start. Its name is
// removed as soon as it is made, so it is gone when the object dies, and also when the process
// does, however it ends.
class TScratchFile {
 public:
  // A new, empty scratch file in `folder`; nullopt (with `error` set, when given, naming the
  // folder and the reason) when none can be made there.
  static std::optional<TScratchFile> Make(const std::filesystem::path& folder, std::string* error = nullptr);

  TScratchFile(TScratchFile&& other) noexcept;
  TScratchFile& operator=(TScratchFile&& other) noexcept;
  TScratchFile(const TScratchFile&) = delete;
  TScratchFile& operator=(const TScratchFile&) = delete;
  ~TScratchFile();

  // Appends `bytes`; false when they cannot all be written (a full disk), and then none of them
  // is kept.
  bool Append(std::string_view bytes);
  // Hands the bytes appended so far to `sink`, in order, in chunks; false (with `reason` set on a
  // read error) when reading fails or the sink returns false.
  bool ReadBack(const std::function<bool(std::string_view)>& sink, std::string& reason) const;
  uint64_t Size() const { return size_; }

 private:
  explicit TScratchFile(int fd) : fd_(fd) {}
  int fd_ = -1;
  uint64_t size_ = 0;
};

}  // namespace tsaw
