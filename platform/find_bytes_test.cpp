#include "platform/find_bytes.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace tsaw::platform {
namespace {

// Every needle of up to three bytes from a small alphabet, at every start, in texts that hold
// many near misses: the answers must be the library's.
TEST(FindBytesTest, AnswersAsTheLibrarySearchDoes) {
  std::mt19937 random(7);
  const std::string alphabet = "vr#{$";
  for (int round = 0; round < 300; ++round) {
    std::string text;
    for (int i = static_cast<int>(random() % 40); i > 0; --i) text += alphabet[random() % alphabet.size()];
    for (std::size_t length = 0; length <= 3; ++length) {
      std::string needle;
      for (std::size_t i = 0; i < length; ++i) needle += alphabet[random() % alphabet.size()];
      for (std::size_t from = 0; from <= text.size() + 1; ++from) {
        ASSERT_EQ(FindBytes(text, needle, from), std::string_view(text).find(needle, from))
            << "'" << text << "' '" << needle << "' from " << from;
      }
    }
  }
}

}  // namespace
}  // namespace tsaw::platform
