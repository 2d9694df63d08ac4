#include "templates/template_info.h"

#include <gtest/gtest.h>

#include <string>

#include "testing/temp_dir.h"

namespace tsaw {
namespace {

constexpr const char* kGoodSection =
    "[Template]\r\nName=Sample\r\nPrefix=T101\r\nAuthor=Ann\r\nPurpose=Tests\r\nDesc=One line\r\n";

// Validates a Template.ini holding `content` (no file at all when `content` is null).
TTemplateInfo ValidateText(const char* content) {
  testing::TempDir dir;
  TTemplateInfo info;
  info.IniFile = (dir.path() / "Template.ini").string();
  if (content) dir.Write("Template.ini", content);
  Validate(info);
  return info;
}

std::string MissingKeyMessage(const std::string& key, const std::string& example, const std::string& ini) {
  return "Template \"" + key + "\" key is missing from INI \"Template\" section.\r\n\r\n"
         "Valid Example:\r\n  [Template]\r\n  " + key + "=" + example + "\r\n\r\nINI File:\r\n  " + ini;
}

TEST(Validate, PluginCountForms) {
  const struct {
    const char* name;
    const char* line;  // the PluginCount line; "" for none
    int count;         // 0: invalid
  } cases[] = {
      {"absent", "", 1},           {"empty", "PluginCount=\r\n", 1},
      {"upper bound", "PluginCount=999\r\n", 999},  {"blanks around", "PluginCount=  12 \r\n", 12},
      {"above", "PluginCount=1000\r\n", 0},         {"zero", "PluginCount=0\r\n", 0},
      {"negative", "PluginCount=-5\r\n", 0},        {"text", "PluginCount=abc\r\n", 0},
      {"trailing text", "PluginCount=3x\r\n", 0},   {"huge", "PluginCount=99999999999999999999\r\n", 0},
  };
  for (const auto& c : cases) {
    const TTemplateInfo info = ValidateText((std::string(kGoodSection) + c.line).c_str());
    EXPECT_EQ(info.IsValid, c.count > 0) << c.name;
    EXPECT_EQ(info.PluginCount, c.count) << c.name;
    if (c.count > 0) continue;
    const std::string line(c.line);
    const std::string found = line.substr(12, line.size() - 14);
    EXPECT_EQ(info.ErrorKind, errInvalidPluginCount) << c.name;
    EXPECT_EQ(info.ErrorMessage,
              "Invalid Value \"" + found + "\" for key \"PluginCount\" in INI file.\r\n"
              "This field requires a number from \"1\" to \"999\".\r\n\r\n"
              "Valid Example:\r\n  [Template]\r\n  PluginCount=\"1\"\r\n\r\nINI File:\r\n  " + info.IniFile)
        << c.name;
  }
}

// Every check runs; the kind is that of the last failure, the message that of the first.
TEST(Validate, MissingKeysReportLastKindWithFirstMessage) {
  const struct {
    const char* name;
    const char* content;
    TTemplateError kind;
    const char* key;
    const char* example;
  } cases[] = {
      {"no file", nullptr, errFieldMissingFromTemplateSection, "Name", "MDI Child form plugin"},
      {"only Name", "[Template]\nName=x\n", errFieldMissingFromTemplateSection, "Prefix", "T052"},
      {"no Author and PluginCount=0", "[Template]\nName=x\nPrefix=T1\nPurpose=p\nDesc=d\nPluginCount=0\n",
       errInvalidPluginCount, "Author", "J. Q. Sample"},
      {"blank Desc is named Description", "[Template]\nName=n\nPrefix=T1\nAuthor=a\nPurpose=p\nDesc=  \n",
       errFieldMissingFromTemplateSection, "Description",
       "Use this template to create Child form plugins for MDI Applications. \xC2\xB6 This 2nd line "
       "in description is just for test."},
  };
  for (const auto& c : cases) {
    const TTemplateInfo info = ValidateText(c.content);
    EXPECT_FALSE(info.IsValid) << c.name;
    EXPECT_EQ(info.ErrorKind, c.kind) << c.name;
    EXPECT_EQ(info.ErrorMessage, MissingKeyMessage(c.key, c.example, info.IniFile)) << c.name;
  }
}

TEST(Validate, AFileThatIsThereButCannotBeReadSaysSo) {
  testing::TempDir dir;
  TTemplateInfo info;
  info.IniFile = dir.MakeDir("Template.ini").string();
  EXPECT_FALSE(Validate(info));
  EXPECT_EQ(info.ErrorKind, errFieldMissingFromTemplateSection);
  EXPECT_EQ(info.ReadError, "Cannot read \"" + info.IniFile + "\": it is a folder");
  EXPECT_EQ(ValidateText(nullptr).ReadError, "");
  EXPECT_EQ(ValidateText(kGoodSection).ReadError, "");
}

TEST(Validate, KeysMatchInAnyCaseAndPrefixFormIsNotChecked) {
  const TTemplateInfo info = ValidateText(
      "[TEMPLATE]\nname=n\nprefix=X1\nAUTHOR=Ann\npurpose=Tests\ndesc=d\npluginCOUNT=4\n");
  EXPECT_TRUE(info.IsValid);
  EXPECT_EQ(info.ErrorKind, errUndefined);
  EXPECT_EQ(info.ErrorMessage, "");
  EXPECT_EQ(info.Prefix + "|" + info.Author + "|" + info.Purpose + "|" + info.Description, "X1|Ann|Tests|d");
  EXPECT_EQ(info.PluginCount, 4);
}

TEST(Validate, PilcrowBreaksDescriptionInBothEncodings) {
  const struct {
    const char* name;
    const char* desc;
  } cases[] = {{"Windows-1252", "First\xB6Second"}, {"UTF-8", "First \xC2\xB6 Second"}};
  for (const auto& c : cases) {
    const std::string text = "[Template]\nName=n\nPrefix=T1\nAuthor=a\nPurpose=p\nDesc=" + std::string(c.desc);
    const TTemplateInfo info = ValidateText(text.c_str());
    EXPECT_TRUE(info.IsValid) << c.name;
    EXPECT_EQ(info.Description, "First\r\nSecond") << c.name;
  }
}

}  // namespace
}  // namespace tsaw
