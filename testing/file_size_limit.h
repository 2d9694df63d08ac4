#pragma once
// Test helper: a full disk, as far as this process sees it. While the object lives, no file can
// grow beyond `bytes`; a write that would is cut short and the next one fails (EFBIG), as on a
// disk that fills up.

#include <sys/resource.h>

#include <csignal>
#include <cstdint>

namespace tsaw::testing {

class FileSizeLimit {
 public:
  explicit FileSizeLimit(uint64_t bytes) {
    getrlimit(RLIMIT_FSIZE, &previous_);
    // Without this the kernel would end the process with SIGXFSZ instead of failing the write.
    previous_handler_ = std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit = previous_;
    limit.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~FileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &previous_);
    std::signal(SIGXFSZ, previous_handler_);
  }
  FileSizeLimit(const FileSizeLimit&) = delete;
  FileSizeLimit& operator=(const FileSizeLimit&) = delete;

 private:
  rlimit previous_{};
  void (*previous_handler_)(int) = nullptr;
};

}  // namespace tsaw::testing
