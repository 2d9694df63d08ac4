#pragma once
// A hint for buffers of many megabytes: filled page by page, such a buffer costs a page fault per
// 4 KB, which for a text of 100 MB takes longer than processing it.

#include <cstddef>

namespace tsaw::platform {

// Asks the system to back the whole 2 MB pages within [data, data + size) with large pages, so
// that filling them takes one fault each. Only a hint: the bytes stay as they are, and a buffer
// too small to hold such a page is left alone.
void PreferLargePages(void* data, std::size_t size);

}  // namespace tsaw::platform
