#include "model/ini_file.h"

#include <gtest/gtest.h>

#include "testing/temp_dir.h"

namespace tsaw {
namespace {

using Entries = std::vector<std::pair<std::string, std::string>>;

constexpr const char* kSample =
    "\xEF\xBB\xBF; a comment before anything\r\n"
    "orphan=before any section\r\n"
    "[Template]\r\n"
    "Name = My Template  \r\n"
    "name=a later duplicate\r\n"
    "a line without equals\r\n"
    "  ; an indented comment=with equals\r\n"
    "Desc=First \xC2\xB6 Second\r\n"
    "=no key\r\n"
    "Empty=\r\n"
    "Expr= a = b \r\n"
    "[ Default Values ]  text after the bracket\n"
    "Company.Name=Acme \xC2\xA6 $ReadOnly\n"
    "[template]\n"
    "Extra=from a repeated header\n"
    "NAME=also a duplicate\n";

TEST(IniFileTest, ReadsSectionsWholeInFileOrder) {
  const TIniFile ini = TIniFile::FromText(kSample);
  EXPECT_EQ(ini.ReadSection("TEMPLATE"), (Entries{{"Name", "My Template"},
                                                  {"Desc", "First \xC2\xB6 Second"},
                                                  {"Empty", ""},
                                                  {"Expr", "a = b"},
                                                  {"Extra", "from a repeated header"}}));
  EXPECT_EQ(ini.ReadSection("default values"), (Entries{{"Company.Name", "Acme \xC2\xA6 $ReadOnly"}}));
  EXPECT_EQ(ini.ReadSection("Missing"), Entries{});
  EXPECT_EQ(ini.Error(), "");
}

TEST(IniFileTest, ReadsValuesByNameInAnyCase) {
  const TIniFile ini = TIniFile::FromText(kSample);
  struct Case {
    const char* section;
    const char* key;
    std::string expected;
    bool exists;
  } const cases[] = {
      {"template", "NAME", "My Template", true},
      {"Template", "Empty", "", true},
      {"Template", "Absent", "<default>", false},
      {"Absent", "Name", "<default>", false},
      {"DEFAULT VALUES", "company.name", "Acme \xC2\xA6 $ReadOnly", true},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ini.ReadString(c.section, c.key, "<default>"), c.expected) << c.section << "/" << c.key;
    EXPECT_EQ(ini.ValueExists(c.section, c.key), c.exists) << c.section << "/" << c.key;
  }
  EXPECT_TRUE(ini.SectionExists("default VALUES"));
  EXPECT_FALSE(ini.SectionExists("orphan"));
}

TEST(IniFileTest, ReadsBothEncodingsAndEveryLineEnding) {
  const Entries expected = {{"Desc", "a \xC2\xB6 b"}, {"Opt", "x \xC2\xA6 $ReadOnly"}};
  struct Case {
    const char* name;
    std::string bytes;
  } const cases[] = {
      {"windows-1252, CR LF", "[S]\r\nDesc=a \xB6 b\r\nOpt=x \xA6 $ReadOnly\r\n"},
      {"utf-8, LF", "[S]\nDesc=a \xC2\xB6 b\nOpt=x \xC2\xA6 $ReadOnly"},
      {"utf-8 with mark, CR", "\xEF\xBB\xBF[S]\rDesc=a \xC2\xB6 b\rOpt=x \xC2\xA6 $ReadOnly\r"},
  };
  for (const Case& c : cases) {
    testing::TempDir dir;
    const TIniFile ini = TIniFile::Load(dir.Write("Template.ini", c.bytes));
    EXPECT_EQ(ini.ReadSection("S"), expected) << c.name;
    EXPECT_EQ(ini.Error(), "") << c.name;
  }
}

TEST(IniFileTest, NotesTheLinesItIgnoresAndWhereEachKeyStands) {
  testing::TempDir dir;
  const auto path = dir.Write("Sample.ini", kSample);
  const TIniFile ini = TIniFile::Load(path);
  const std::string tail = " is neither a [section], a ; comment nor a key=value line; it is ignored";
  EXPECT_EQ(ini.Warnings(), (std::vector<std::string>{path.string() + ":6: \"a line without equals\"" + tail,
                                                      path.string() + ":9: \"=no key\"" + tail}));
  EXPECT_EQ(ini.KeyLine("template", "NAME"), 4);
  EXPECT_EQ(ini.KeyLine("Template", "Desc"), 8);
  EXPECT_EQ(ini.KeyLine("Template", "Extra"), 15);
  EXPECT_EQ(ini.KeyLine("Template", "orphan"), 0);

  std::string garbage = "[S]\n" + std::string(100, 'x') + "\n";
  for (int i = 0; i < 30; ++i) garbage += "junk\r\n";
  const std::vector<std::string> warnings = TIniFile::FromText(garbage).Warnings();
  ASSERT_EQ(warnings.size(), 21u);
  EXPECT_EQ(warnings[0], "line 2: \"" + std::string(60, 'x') + "...\"" + tail);
  EXPECT_EQ(warnings[19], "line 21: \"junk\"" + tail);
  EXPECT_EQ(warnings[20], "11 more such lines are ignored");
}

TEST(IniFileTest, MissingFileReadsEmptyAndSaysWhy) {
  testing::TempDir dir;
  const auto path = dir.path() / "TSaW.Default.ini";
  const TIniFile ini = TIniFile::Load(path);
  EXPECT_EQ(ini.Error(), "Cannot read \"" + path.string() + "\": No such file or directory");
  EXPECT_FALSE(ini.SectionExists("TSaW Config"));
  EXPECT_EQ(ini.ReadString("TSaW Config", "ShellBrowserPlugin", "1"), "1");
}

TEST(IniFileTest, OddInputReadsWithoutHarm) {
  std::string binary;
  for (int round = 0; round < 64; ++round) {
    for (int b = 0; b < 256; ++b) binary += static_cast<char>((b * 7 + round) & 0xFF);
  }
  struct Case {
    const char* name;
    std::string text;
    size_t sections;
  } const cases[] = {
      {"no sections", "a=b\nc=d\n", 0},
      {"empty", "", 0},
      {"unclosed header", "[Open\nkey=value\n", 0},
      {"empty header", "[]\nkey=value\n", 1},
      {"binary", std::string(binary), 0},
  };
  for (const Case& c : cases) {
    const TIniFile ini = TIniFile::FromText(c.text);
    EXPECT_EQ(ini.ReadSection("").size(), c.sections) << c.name;
    EXPECT_EQ(ini.ReadString("Open", "key", "none"), "none") << c.name;
  }
}

TEST(IniFileTest, HugeFileIsReadWhole) {
  std::string text = "[Big]\n";
  for (int i = 0; i < 200000; ++i) text += "Key" + std::to_string(i) + "=" + std::to_string(i) + "\n";
  text += "Long=" + std::string(10 << 20, 'v') + "\n";
  const TIniFile ini = TIniFile::FromText(text);
  const auto entries = ini.ReadSection("big");
  ASSERT_EQ(entries.size(), 200001u);
  EXPECT_EQ(entries[199999], (std::pair<std::string, std::string>{"Key199999", "199999"}));
  EXPECT_EQ(ini.ReadString("Big", "long").size(), size_t{10 << 20});
}

TEST(IniFileTest, BooleansAcceptTheFiveYesWordsInAnyCase) {
  for (const char* yes : {"yes", "Y", "TRUE", "t", "1", "Yes"}) EXPECT_TRUE(IniBool(yes)) << yes;
  for (const char* no : {"no", "", "false", "2", "yes ", "ja", "on"}) EXPECT_FALSE(IniBool(no)) << no;
}

}  // namespace
}  // namespace tsaw
