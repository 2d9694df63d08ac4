#include "platform/large_pages.h"

#include <sys/mman.h>

#include <cstdint>

namespace tsaw::platform {

void PreferLargePages(void* data, std::size_t size) {
  constexpr std::uintptr_t kLargePage = std::uintptr_t{2} << 20;
  const auto start = reinterpret_cast<std::uintptr_t>(data);
  const std::uintptr_t first = (start + kLargePage - 1) & ~(kLargePage - 1);
  const std::uintptr_t last = (start + size) & ~(kLargePage - 1);
  if (last <= first) return;
  // A system without large pages refuses the advice; the buffer then works as before.
  madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
}

}  // namespace tsaw::platform
