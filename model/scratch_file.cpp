#include "model/scratch_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>
#include <utility>

namespace tsaw {

std::optional<TScratchFile> TScratchFile::Make(const std::filesystem::path& folder, std::string* error) {
  std::string name = (folder / ".tsaw-XXXXXX").string();
  const int fd = ::mkostemp(name.data(), O_CLOEXEC);
  if (fd < 0) {
    if (error) *error = "Cannot make a scratch file in \"" + folder.string() + "\": " + std::generic_category().message(errno);
    return std::nullopt;
  }
  ::unlink(name.c_str());
  return TScratchFile(fd);
}

TScratchFile::TScratchFile(TScratchFile&& other) noexcept
    : fd_(std::exchange(other.fd_, -1)), size_(std::exchange(other.size_, 0)) {}

TScratchFile& TScratchFile::operator=(TScratchFile&& other) noexcept {
  if (this != &other) {
    if (fd_ >= 0) ::close(fd_);
    fd_ = std::exchange(other.fd_, -1);
    size_ = std::exchange(other.size_, 0);
  }
  return *this;
}

TScratchFile::~TScratchFile() {
  if (fd_ >= 0) ::close(fd_);
}

bool TScratchFile::Append(std::string_view bytes) {
  uint64_t end = size_;
  while (!bytes.empty()) {
    const ssize_t count = ::pwrite(fd_, bytes.data(), bytes.size(), static_cast<off_t>(end));
    if (count < 0 && errno == EINTR) continue;
    // Bytes written past size_ before a failure are overwritten by the next append, never read.
    if (count <= 0) return false;
    end += static_cast<uint64_t>(count);
    bytes.remove_prefix(static_cast<size_t>(count));
  }
  size_ = end;
  return true;
}

bool TScratchFile::ReadBack(const std::function<bool(std::string_view)>& sink, std::string& reason) const {
  std::array<char, 65536> buffer;
  for (uint64_t at = 0; at < size_;) {
    const size_t wanted = static_cast<size_t>(std::min<uint64_t>(buffer.size(), size_ - at));
    const ssize_t count = ::pread(fd_, buffer.data(), wanted, static_cast<off_t>(at));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) {
      reason = count == 0 ? "the scratch file ended early" : std::generic_category().message(errno);
      return false;
    }
    if (!sink(std::string_view(buffer.data(), static_cast<size_t>(count)))) return false;
    at += static_cast<uint64_t>(count);
  }
  return true;
}

}  // namespace tsaw
