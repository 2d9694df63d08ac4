#include "model/file_bytes.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdio>
#include <functional>
#include <random>
#include <string_view>
#include <system_error>
#include <utility>

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
  // Gives up the descriptor without closing it.
  int Release() { return std::exchange(fd_, -1); }
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
  // O_NONBLOCK stays: reads of a regular file never wait on it anyway.
  return fd;
}

// Why a file past the read bound is refused.
std::string TooLargeToRead() { return "it is larger than " + std::to_string(kMostFileBytes >> 20) + " MB"; }

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

// Writes all of `bytes` to `fd`; false with `reason` set when that fails.
bool WriteAll(int fd, std::string_view bytes, std::string& reason) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(fd, bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) {
      reason = SystemReason(errno);
      return false;
    }
    bytes.remove_prefix(static_cast<size_t>(count));
  }
  return true;
}

// The process's umask, asked once while the program starts: reading it means setting it, twice
// over, and a file or folder another thread made in between would get the wrong permissions.
const mode_t kProcessUmask = [] {
  const mode_t asked = ::umask(0);
  ::umask(asked);
  return asked;
}();

mode_t NewFileMode() { return 0666 & ~kProcessUmask; }

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

// Copies the rest of `in` to `out`: inside the kernel where it can, through memory otherwise.
bool CopyAll(int in, int out, std::string& reason) {
  bool copied = false;
  if (CopyInKernel(in, out, reason, copied)) return true;
  // Where the kernel cannot copy between these files, the bytes go through memory.
  if (copied) return false;
  return ReadAll(in, [&](const char* data, size_t size) {
    return WriteAll(out, std::string_view(data, size), reason);
  }, reason);
}

// Puts `fd` back at its start; false with `reason` set when it cannot be.
bool Rewind(int fd, std::string& reason) {
  if (::lseek(fd, 0, SEEK_SET) == 0) return true;
  reason = SystemReason(errno);
  return false;
}

// Gives the new file `fd` the permissions `mode` where the umask took some of them away.
bool GiveMode(int fd, mode_t mode, std::string& reason) {
  if ((mode & kProcessUmask) == 0 || ::fchmod(fd, mode) == 0) return true;
  reason = SystemReason(errno);
  return false;
}

// Makes a new file with a name of its own beside `path`, a short one (".tsaw-" and six letters)
// so that a file name near the system's length limit still has room, already with `mode`.
// Returns the descriptor (-1 with `reason` set on failure) and the name in `name`.
FileDescriptor CreateBeside(const std::filesystem::path& path, mode_t mode, std::string& name, std::string& reason) {
  static constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
  thread_local std::minstd_rand random(std::random_device{}());
  const std::string folder = path.parent_path().string();
  for (int attempt = 0; attempt < 100; ++attempt) {
    name = (folder.empty() ? std::string() : folder + "/") + ".tsaw-";
    for (int letter = 0; letter < 6; ++letter) name += kLetters[random() % kLetters.size()];
    FileDescriptor fd(::open(name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode));
    if (fd.get() >= 0 && !GiveMode(fd.get(), mode, reason)) {
      ::unlink(name.c_str());
      return FileDescriptor(-1);
    }
    if (fd.get() >= 0 || errno != EEXIST) {
      if (fd.get() < 0) reason = SystemReason(errno);
      return fd;
    }
  }
  reason = SystemReason(EEXIST);
  return FileDescriptor(-1);
}

using TFill = std::function<bool(int fd, std::string& reason)>;

// Writes what `fill` produces into a temporary file beside `path` and renames it over `path`.
bool WriteBeside(const std::filesystem::path& path, mode_t mode, const TFill& fill, std::string& reason) {
  std::string name;
  FileDescriptor fd = CreateBeside(path, mode, name, reason);
  if (fd.get() < 0) return false;
  bool done = fill(fd.get(), reason);
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

// Gives the unnamed file `fd` the name `path`; false when the name is taken or the system cannot.
// The file itself is named where the kernel lets its owner do that, else its link in /proc; the
// first refusal is remembered, sparing the refused call for every later file.
bool NameUnnamed(int fd, const std::filesystem::path& path) {
  static std::atomic<bool> by_descriptor{true};
  if (by_descriptor.load(std::memory_order_relaxed)) {
    if (::linkat(fd, "", AT_FDCWD, path.c_str(), AT_EMPTY_PATH) == 0) return true;
    if (errno != ENOENT && errno != EPERM) return false;
    by_descriptor.store(false, std::memory_order_relaxed);
  }
  std::array<char, 32> self{};
  std::snprintf(self.data(), self.size(), "/proc/self/fd/%d", fd);
  return ::linkat(AT_FDCWD, self.data(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0;
}

// Reads the `expected` bytes fstat announced straight into `bytes`; false with `reason` set on a
// read error or when the bound is passed.
bool ReadAllInto(int fd, size_t expected, std::string& bytes, std::string& reason) {
  bytes.resize(expected);
  size_t have = 0;
  while (have < expected) {
    const ssize_t count = ::read(fd, bytes.data() + have, expected - have);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) {
      reason = SystemReason(errno);
      return false;
    }
    if (count == 0) break;  // it shrank
    have += static_cast<size_t>(count);
  }
  bytes.resize(have);
  // The file as it was when opened; one more read to find its end would cost a system call per
  // file. Only files that announce no size (the kernel makes some up as they are read) are read
  // on to their end.
  if (expected != 0) return true;
  return ReadAll(fd, [&](const char* data, size_t size) {
    if (bytes.size() + size > kMostFileBytes) {
      reason = TooLargeToRead();
      return false;
    }
    bytes.append(data, size);
    return true;
  }, reason);
}

}  // namespace

std::optional<std::string> ReadFileBytes(const std::filesystem::path& path, std::string* error) {
  std::string reason;
  struct stat status {};
  FileDescriptor fd = OpenRegular(path, status, reason);
  std::string bytes;
  if (fd.get() >= 0 && static_cast<size_t>(status.st_size) > kMostFileBytes) {
    reason = TooLargeToRead();
  } else if (fd.get() >= 0 && ReadAllInto(fd.get(), static_cast<size_t>(status.st_size), bytes, reason)) {
    return bytes;
  }
  if (error) *error = "Cannot read \"" + path.string() + "\": " + reason;
  return std::nullopt;
}

bool WriteFileFrom(const std::filesystem::path& path, const TByteSource& source, std::string* error) {
  std::string reason;
  struct stat status {};
  const bool exists = ::stat(path.c_str(), &status) == 0;
  if (exists && S_ISDIR(status.st_mode)) {
    reason = "it is a folder";
  } else {
    const mode_t mode = exists ? (status.st_mode & 07777) : NewFileMode();
    const auto fill = [&](int fd, std::string& fill_reason) {
      return source([&](std::string_view bytes) { return WriteAll(fd, bytes, fill_reason); }, fill_reason);
    };
    if (WriteBeside(path, mode, fill, reason)) return true;
  }
  if (error) *error = "Cannot write \"" + path.string() + "\": " + reason;
  return false;
}

bool WriteFileBytes(const std::filesystem::path& path, std::string_view bytes, std::string* error,
                    TPlacement placement) {
  if (placement == TPlacement::Fresh) return TFreshFile::OfBytes(path, bytes).Show(error);
  return WriteFileFrom(path, [bytes](const TByteSink& write, std::string&) { return write(bytes); }, error);
}

bool CopyFileBytes(const std::filesystem::path& source, const std::filesystem::path& dest, std::string* error,
                   TPlacement placement) {
  if (placement == TPlacement::Fresh) return TFreshFile::CopyOf(source, dest).Show(error);
  std::string reason;
  struct stat status {};
  const FileDescriptor in = OpenRegular(source, status, reason);
  const auto fill = [&in](int fd, std::string& fill_reason) { return CopyAll(in.get(), fd, fill_reason); };
  if (in.get() >= 0 && WriteBeside(dest, status.st_mode & 0777, fill, reason)) return true;
  if (error) *error = "Cannot copy \"" + source.string() + "\" to \"" + dest.string() + "\": " + reason;
  return false;
}

TFreshFile TFreshFile::OfBytes(std::filesystem::path path, std::string_view bytes) {
  TFreshFile file;
  file.path_ = std::move(path);
  file.bytes_ = bytes;
  file.mode_ = NewFileMode();
  return file;
}

TFreshFile TFreshFile::CopyOf(std::filesystem::path source, std::filesystem::path path) {
  TFreshFile file;
  file.source_ = std::move(source);
  file.path_ = std::move(path);
  file.copy_ = true;
  return file;
}

TFreshFile::TFreshFile(TFreshFile&& other) noexcept
    : source_(std::move(other.source_)),
      path_(std::move(other.path_)),
      bytes_(other.bytes_),
      copy_(other.copy_),
      mode_(other.mode_),
      in_(std::exchange(other.in_, -1)),
      out_(std::exchange(other.out_, -1)),
      state_(other.state_),
      reason_(std::move(other.reason_)) {}

TFreshFile::~TFreshFile() {
  if (in_ >= 0) ::close(in_);
  if (out_ >= 0) ::close(out_);
}

void TFreshFile::Fill() {
  if (state_ != TState::New) return;
  state_ = TState::Failed;
  if (copy_) {
    struct stat status {};
    FileDescriptor in = OpenRegular(source_, status, reason_);
    if (in.get() < 0) return;
    mode_ = status.st_mode & 0777;
    in_ = in.Release();
  }
  const std::string folder = path_.has_parent_path() ? path_.parent_path().string() : ".";
  FileDescriptor out(::open(folder.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, mode_));
  if (out.get() < 0) {
    state_ = TState::NoUnnamedFile;
    return;
  }
  if (!GiveMode(out.get(), mode_, reason_) || !FillInto(out.get(), reason_)) return;
  out_ = out.Release();
  state_ = TState::Filled;
}

bool TFreshFile::Show(std::string* error) {
  Fill();
  if (state_ == TState::Failed) return Fail(error);
  if (state_ == TState::Filled) {
    FileDescriptor out(std::exchange(out_, -1));
    // The name holds all of the bytes or none, with no temporary name to rename.
    if (NameUnnamed(out.get(), path_)) {
      if (out.Close() == 0) return true;
      reason_ = SystemReason(errno);
      ::unlink(path_.c_str());
      return Fail(error);
    }
    // The name is taken, or the system cannot name the file: a temporary name instead.
  }
  return ShowBeside(error);
}

bool TFreshFile::ShowBeside(std::string* error) {
  if (!copy_) {
    return WriteFileFrom(path_, [this](const TByteSink& write, std::string&) { return write(bytes_); }, error);
  }
  // An unnamed file that could not be named may have taken some of the source already.
  const auto fill = [this](int fd, std::string& reason) { return FillInto(fd, reason); };
  if (Rewind(in_, reason_) && WriteBeside(path_, mode_, fill, reason_)) return true;
  return Fail(error);
}

bool TFreshFile::FillInto(int fd, std::string& reason) {
  return copy_ ? CopyAll(in_, fd, reason) : WriteAll(fd, bytes_, reason);
}

bool TFreshFile::Fail(std::string* error) const {
  if (!error) return false;
  *error = copy_ ? "Cannot copy \"" + source_.string() + "\" to \"" + path_.string() + "\": " + reason_
                 : "Cannot write \"" + path_.string() + "\": " + reason_;
  return false;
}

}  // namespace tsaw
