#include "model/text_file.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "testing/temp_dir.h"

namespace tsaw {
namespace {

std::string AllBytes() {
  std::string bytes;
  for (int b = 0; b < 256; ++b) bytes += static_cast<char>(b);
  return bytes;
}

TEST(TextFileTest, DecodesUtf8AsItIsAndAnythingElseAsWindows1252) {
  struct Case {
    const char* name;
    std::string bytes;
    std::string text;
    TTextEncoding encoding;
  } const cases[] = {
      {"ascii", "abc", "abc", TTextEncoding::Utf8},
      {"utf-8 pilcrow and broken bar", "a\xC2\xB6 b\xC2\xA6", "a\xC2\xB6 b\xC2\xA6", TTextEncoding::Utf8},
      {"byte-order mark kept", "\xEF\xBB\xBFx", "\xEF\xBB\xBFx", TTextEncoding::Utf8},
      {"nul bytes", std::string("a\0b", 3), std::string("a\0b", 3), TTextEncoding::Utf8},
      {"1252 pilcrow and broken bar", "a\xB6 b\xA6", "a\xC2\xB6 b\xC2\xA6", TTextEncoding::Windows1252},
      {"truncated sequence", "x\xC3", "x\xC3\x83", TTextEncoding::Windows1252},
      {"overlong slash", "\xC0\xAF", "\xC3\x80\xC2\xAF", TTextEncoding::Windows1252},
      {"encoded surrogate", "\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xE2\x82\xAC", TTextEncoding::Windows1252},
      {"above U+10FFFF", "\xF4\x90\x80\x80", "\xC3\xB4\xC2\x90\xE2\x82\xAC\xE2\x82\xAC",
       TTextEncoding::Windows1252},
  };
  for (const Case& c : cases) {
    const TTextFile decoded = DecodeText(c.bytes);
    EXPECT_EQ(decoded.Text, c.text) << c.name;
    EXPECT_EQ(decoded.Encoding, c.encoding) << c.name;
  }
}

TEST(TextFileTest, DecodesTheWindows1252RangeThatLatin1Lacks) {
  std::string high;
  for (int b = 0x80; b <= 0x9F; ++b) high += static_cast<char>(b);
  EXPECT_EQ(DecodeText(high).Text,
            "€\u0081‚ƒ„…†‡ˆ‰Š‹Œ\u008DŽ\u008F"
            "\u0090‘’“”•–—˜™š›œ\u009DžŸ");
}

TEST(TextFileTest, EveryWindows1252ByteSurvivesARoundTrip) {
  const TTextFile decoded = DecodeText(AllBytes());
  ASSERT_EQ(decoded.Encoding, TTextEncoding::Windows1252);
  EXPECT_EQ(EncodeText(decoded.Text, decoded.Encoding), AllBytes());
}

TEST(TextFileTest, EncodesWhatWindows1252LacksAsQuestionMarks) {
  EXPECT_EQ(EncodeText("a\xE2\x82\xAC b\xE2\x9C\x93 \xC2\xB6", TTextEncoding::Windows1252), "a\x80 b? \xB6");
  EXPECT_EQ(EncodeText("bad \xC3 byte", TTextEncoding::Windows1252), "bad ? byte");
  EXPECT_EQ(EncodeText("\xE2\x9C\x93", TTextEncoding::Utf8), "\xE2\x9C\x93");
}

TEST(TextFileTest, SplitsAtEveryKindOfLineBreak) {
  struct Case {
    const char* name;
    std::string text;
    std::vector<std::string> lines;
  } const cases[] = {
      {"empty", "", {}},
      {"no break", "a", {"a"}},
      {"final break makes no line", "a\r\n", {"a"}},
      {"lone break", "\n", {""}},
      {"mixed", "a\r\nb\nc\rd", {"a", "b", "c", "d"}},
      {"LF CR is two breaks", "a\n\rb", {"a", "", "b"}},
      {"blank line kept", "a\r\n\r\nb\r\n", {"a", "", "b"}},
      {"nul inside a line", std::string("a\0b\nc", 5), {std::string("a\0b", 3), "c"}},
  };
  for (const Case& c : cases) EXPECT_EQ(SplitLines(c.text), c.lines) << c.name;
}

TEST(TextFileTest, JoinsWithCrLfAndRoundTrips) {
  const std::vector<std::string> lines = {"first", "", std::string(1 << 20, 'x'), "last"};
  const std::string joined = JoinLines(lines);
  EXPECT_EQ(joined, "first\r\n\r\n" + std::string(1 << 20, 'x') + "\r\nlast\r\n");
  EXPECT_EQ(SplitLines(joined), lines);
  EXPECT_EQ(JoinLines({}), "");
}

// The word-at-a-time scan over ASCII must still see a bad or a multi-byte sequence at any offset.
TEST(TextFileTest, FindsTheFirstNonAsciiByteAtEveryOffset) {
  for (size_t offset = 0; offset < 20; ++offset) {
    const std::string ascii(offset, 'a');
    EXPECT_EQ(DecodeText(ascii + "\xC2\xB6" + ascii).Encoding, TTextEncoding::Utf8) << offset;
    const TTextFile bad = DecodeText(std::string(ascii + "\xB6" + ascii));
    EXPECT_EQ(bad.Encoding, TTextEncoding::Windows1252) << offset;
    EXPECT_EQ(bad.Text, ascii + "\xC2\xB6" + ascii) << offset;
  }
}

// MakeCrLfLines keeps text whose lines all end in CR LF and otherwise gives WithCrLfLines.
TEST(TextFileTest, NormalisesLineEndsOnlyWhereNeeded) {
  const char* const cases[] = {"",           "\r\n",       "a\r\nb\r\n",  "a",     "a\r\nb",  "a\nb\r\n",
                               "a\r\r\n",      "a\n\r\n",    "\r",          "\n",     "a\n\rb", "\r\n\r\n\n",
                               "x\r\n\r\nz\r\n", "a\rb\nc\r\n"};
  for (const std::string text : cases) {
    std::string normalised = text;
    platform::MakeCrLfLines(normalised);
    EXPECT_EQ(normalised, platform::WithCrLfLines(text)) << "'" << text << "'";
    EXPECT_EQ(platform::HasCrLfLines(text), normalised == text) << "'" << text << "'";
  }
}

// The same on longer texts of short lines, where line ends fall anywhere in a block of sixteen.
TEST(TextFileTest, NormalisesLineEndsOnlyWhereNeededInLongTexts) {
  std::mt19937 random(7);
  const char letters[] = {'a', '\r', '\n'};
  for (int round = 0; round < 20000; ++round) {
    std::string text;
    const auto lines = random() % 12;
    for (unsigned line = 0; line < lines; ++line) text += std::string(random() % 9, 'a') + "\r\n";
    // Most texts are well formed; the others get one stray letter somewhere.
    if (!text.empty() && round % 2 == 1) text[random() % text.size()] = letters[random() % 3];
    std::string normalised = text;
    platform::MakeCrLfLines(normalised);
    ASSERT_EQ(normalised, platform::WithCrLfLines(text)) << "'" << text << "'";
    ASSERT_EQ(platform::HasCrLfLines(text), normalised == text) << "'" << text << "'";
  }
}

TEST(TextFileTest, WritesAndReadsBytesExactly) {
  testing::TempDir dir;
  const auto path = dir.path() / "bytes.bin";
  dir.Write("bytes.bin", std::string(5000, 'z'));  // a longer file is replaced, not overwritten in part
  std::string error;
  ASSERT_TRUE(WriteFileBytes(path, AllBytes(), &error)) << error;
  EXPECT_EQ(ReadFileBytes(path, &error), AllBytes());
  EXPECT_EQ(error, "");
}

TEST(TextFileTest, ReportsWhatCannotBeReadOrWritten) {
  testing::TempDir dir;
  const auto missing = dir.path() / "missing.txt";
  const auto folder = dir.MakeDir("folder");
  std::string error;
  EXPECT_EQ(ReadFileBytes(missing, &error), std::nullopt);
  EXPECT_EQ(error, "Cannot read \"" + missing.string() + "\": No such file or directory");
  EXPECT_EQ(ReadFileBytes(folder, &error), std::nullopt);
  EXPECT_EQ(error, "Cannot read \"" + folder.string() + "\": it is a folder");
  EXPECT_FALSE(WriteFileBytes(dir.path() / "no/such/folder.txt", "x", &error));
  EXPECT_EQ(error, "Cannot write \"" + (dir.path() / "no/such/folder.txt").string() + "\": No such file or directory");
  EXPECT_FALSE(WriteFileBytes(folder, "x", &error));
  EXPECT_EQ(error, "Cannot write \"" + folder.string() + "\": it is a folder");
  EXPECT_EQ(ReadFileBytes(missing), std::nullopt);  // no error text wanted: no crash either
}

}  // namespace
}  // namespace tsaw
