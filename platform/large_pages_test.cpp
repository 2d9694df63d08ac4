#include "platform/large_pages.h"

#include <gtest/gtest.h>

#include <string>

namespace tsaw::platform {
namespace {

// The advice must never touch the bytes, whatever the range: filled, unaligned, smaller than a
// large page, or empty.
TEST(LargePagesTest, KeepsTheBytesOfAnyRange) {
  std::string buffer(9 << 20, '\0');
  for (std::size_t i = 0; i < buffer.size(); ++i) buffer[i] = static_cast<char>(i * 7 + i / 4096);
  const std::string before = buffer;
  PreferLargePages(buffer.data() + 1, buffer.size() - 1);
  PreferLargePages(buffer.data() + 3, 4096);
  PreferLargePages(buffer.data(), 0);
  EXPECT_TRUE(buffer == before);
}

}  // namespace
}  // namespace tsaw::platform
