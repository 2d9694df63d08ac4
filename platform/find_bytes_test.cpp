#include "platform/find_bytes.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace tsaw::platform {
namespace {

// Fewer than `bound` bytes drawn from `alphabet`.
std::string RandomText(std::mt19937& random, const std::string& alphabet, unsigned bound) {
  std::string text;
  for (int i = static_cast<int>(random() % bound); i > 0; --i) text += alphabet[random() % alphabet.size()];
  return text;
}

// Every needle of up to three bytes from a small alphabet, at every start, in texts that hold
// many near misses: the answers must be the library's.
TEST(FindBytesTest, AnswersAsTheLibrarySearchDoes) {
  std::mt19937 random(7);
  const std::string alphabet = "vr#{$";
  for (int round = 0; round < 300; ++round) {
    const std::string text = RandomText(random, alphabet, 40);
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

// Texts of every length around the sixteen-byte steps, hits at every place of a step.
TEST(FindBytesTest, VisitsEveryPlaceOfEitherByteInOrder) {
  std::mt19937 random(11);
  const std::string alphabet = "vr#x\x80\xff";
  for (int round = 0; round < 2000; ++round) {
    const std::string text = RandomText(random, alphabet, 70);
    std::vector<std::size_t> expected;
    for (std::size_t at = 0; at < text.size(); ++at) {
      if (text[at] == '#' || text[at] == 'v') expected.push_back(at);
    }
    std::vector<std::size_t> visited;
    ForEachOfTwoBytes(text, '#', 'v', [&](std::size_t at) { visited.push_back(at); });
    ASSERT_EQ(visited, expected) << "'" << text << "'";
  }
}

// One byte, or the first of either of two, from every start, past the end too, with the hit
// inside, at the edge of or beyond the first sixteen bytes: the answers must be the library's.
TEST(FindBytesTest, FindsTheFirstOfOneOrEitherByte) {
  std::mt19937 random(13);
  const std::string alphabet = "\r\nxxxxxxxxxx\x80\xff";
  for (int round = 0; round < 500; ++round) {
    const std::string text = RandomText(random, alphabet, 70);
    for (std::size_t from = 0; from <= text.size() + 1; ++from) {
      ASSERT_EQ(FindEitherByte(text, '\r', '\n', from), std::string_view(text).find_first_of("\r\n", from))
          << "'" << text << "' from " << from;
      ASSERT_EQ(FindByte(text, '\n', from), std::string_view(text).find('\n', from))
          << "'" << text << "' from " << from;
    }
  }
}

}  // namespace
}  // namespace tsaw::platform
