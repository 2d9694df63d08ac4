#include "model/file_bytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <functional>
#include <system_error>

namespace tsaw {
namespace {

std::string SystemReason(int error_number) { return std::generic_category().message(error_number); }

class FileDescriptor {
 public:
  explicit FileDescriptor(int fd) : fd_(fd) {}
  FileDescriptor(FileDescriptor&& other) noexcept : fd_(other.fd_) { other.fd_ = -1; }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  ~FileDescriptor() { Close(); }
  int get() const { return fd_; }
  // The result of close(2), which may be the first to report a full disk.
  int Close() {
    const int result = fd_ >= 0 ? ::close(fd_) : 0;
    fd_ = -1;
    return result;
  }

 private:
  int fd_;
};

// Opens `path` for reading without blocking on a FIFO, and checks that it is a regular file.
// Returns the open descriptor (-1 with `reason` set on failure) and its status.
FileDescriptor OpenRegular(const std::filesystem::path& path, struct stat& status, std::string& reason) {
  FileDescriptor fd(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  if (fd.get() < 0) {
    reason = SystemReason(errno);
    return fd;
  }
  if (::fstat(fd.get(), &status) != 0) {
    reason = SystemReason(errno);
    return FileDescriptor(-1);
  }
  if (S_ISDIR(status.st_mode)) {
    reason = "it is a folder";
    return FileDescriptor(-1);
  }
  if (!S_ISREG(status.st_mode)) {
    reason = "it is not a regular file";
    return FileDescriptor(-1);
  }
  // Regular files never block; reads then behave as usual.
  ::fcntl(fd.get(), F_SETFL, ::fcntl(fd.get(), F_GETFL) & ~O_NONBLOCK);
  return fd;
}

// Reads all of `fd`, handing each chunk to `sink`; false with `reason` set on a read error or
// when the sink refuses.
bool ReadAll(int fd, const std::function<bool(const char*, size_t)>& sink, std::string& reason) {
  std::array<char, 65536> buffer;
  for (;;) {
    const ssize_t count = ::read(fd, buffer.data(), buffer.size());
    if (count == 0) return true;
    if (count < 0) {
      if (errno == EINTR) continue;
      reason = SystemReason(errno);
      return false;
    }
    if (!sink(buffer.data(), static_cast<size_t>(count))) return false;
  }
}

bool WriteAll(int fd, const char* data, size_t size) {
  while (size > 0) {
    const ssize_t count = ::write(fd, data, size);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    data += count;
    size -= static_cast<size_t>(count);
  }
  return true;
}

// The process's umask, asked once: reading it means setting it, twice over.
mode_t NewFileMode() {
  static const mode_t mode = [] {
    const mode_t mask = ::umask(0);
    ::umask(mask);
    return 0666 & ~mask;
  }();
  return mode;
}

// Copies the rest of `in` to `out` inside the kernel (sharing the blocks where the file system
// can); false when that cannot be done between these two files, and nothing was copied then.
bool CopyInKernel(int in, int out, std::string& reason, bool& copied) {
  copied = false;
  for (;;) {
    const ssize_t count = ::copy_file_range(in, nullptr, out, nullptr, size_t{1} << 30, 0);
    if (count == 0) return true;
    if (count > 0) {
      copied = true;
      continue;
    }
    if (errno == EINTR) continue;
    reason = SystemReason(errno);
    return false;
  }
}

// Writes what `fill` produces into a temporary file beside `path` and renames it over `path`.
bool WriteBeside(const std::filesystem::path& path, mode_t mode,
                 const std::function<bool(int fd, std::string& reason)>& fill, std::string& reason) {
  // A short name of its own, so that a file name near the system's length limit still has room.
  std::string name = (path.parent_path() / ".tsaw-XXXXXX").string();
  FileDescriptor fd(::mkostemp(name.data(), O_CLOEXEC));
  if (fd.get() < 0) {
    reason = SystemReason(errno);
    return false;
  }
  bool done = fill(fd.get(), reason);
  if (done && ::fchmod(fd.get(), mode) != 0) {
    reason = SystemReason(errno);
    done = false;
  }
  if (fd.Close() != 0 && done) {
    reason = SystemReason(errno);
    done = false;
  }
  if (done && ::rename(name.c_str(), path.c_str()) != 0) {
    reason = SystemReason(errno);
    done = false;
  }
  if (!done) ::unlink(name.c_str());
  return done;
}

}  // namespace

std::optional<std::string> ReadFileBytes(const std::filesystem::path& path, std::string* error) {
  std::string reason;
  struct stat status {};
  FileDescriptor fd = OpenRegular(path, status, reason);
  std::string bytes;
  if (fd.get() >= 0 && static_cast<size_t>(status.st_size) > kMostFileBytes) {
    reason = "it is larger than " + std::to_string(kMostFileBytes >> 20) + " MB";
  } else if (fd.get() >= 0) {
    bytes.reserve(static_cast<size_t>(status.st_size));
    // The size may change while reading; the bound holds for what is read.
    const auto append = [&](const char* data, size_t size) {
      if (bytes.size() + size > kMostFileBytes) {
        reason = "it is larger than " + std::to_string(kMostFileBytes >> 20) + " MB";
        return false;
      }
      bytes.append(data, size);
      return true;
    };
    if (ReadAll(fd.get(), append, reason)) return bytes;
  }
  if (error) *error = "Cannot read \"" + path.string() + "\": " + reason;
  return std::nullopt;
}

bool WriteFileBytes(const std::filesystem::path& path, std::string_view bytes, std::string* error) {
  std::string reason;
  struct stat status {};
  const bool exists = ::stat(path.c_str(), &status) == 0;
  if (exists && S_ISDIR(status.st_mode)) {
    reason = "it is a folder";
  } else {
    const mode_t mode = exists ? (status.st_mode & 07777) : NewFileMode();
    const auto fill = [&](int fd, std::string& fill_reason) {
      if (WriteAll(fd, bytes.data(), bytes.size())) return true;
      fill_reason = SystemReason(errno);
      return false;
    };
    if (WriteBeside(path, mode, fill, reason)) return true;
  }
  if (error) *error = "Cannot write \"" + path.string() + "\": " + reason;
  return false;
}

bool CopyFileBytes(const std::filesystem::path& source, const std::filesystem::path& dest, std::string* error) {
  std::string reason;
  struct stat status {};
  FileDescriptor in = OpenRegular(source, status, reason);
  if (in.get() >= 0) {
    const auto fill = [&](int fd, std::string& fill_reason) {
      bool copied = false;
      if (CopyInKernel(in.get(), fd, fill_reason, copied)) return true;
      // Where the kernel cannot copy between these files, the bytes go through memory.
      if (copied) return false;
      return ReadAll(in.get(), [&](const char* data, size_t size) {
        if (WriteAll(fd, data, size)) return true;
        fill_reason = SystemReason(errno);
        return false;
      }, fill_reason);
    };
    if (WriteBeside(dest, status.st_mode & 0777, fill, reason)) return true;
  }
  if (error) *error = "Cannot copy \"" + source.string() + "\" to \"" + dest.string() + "\": " + reason;
  return false;
}

}  // namespace tsaw
