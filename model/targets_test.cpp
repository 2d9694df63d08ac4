#include "model/targets.h"

#include <gtest/gtest.h>

#include <vector>

namespace tsaw {
namespace {

TEST(TargetsTest, TargetTableAndInverseTableAgree) {
  int pairs_with_target = 0;
  for (uint16_t language = 0; language <= kLanguageCount; ++language) {
    for (uint16_t platform = 0; platform <= kPlatformCount; ++platform) {
      const uint16_t target = TargetOf(language, platform);
      if (target == 0) continue;
      ++pairs_with_target;
      EXPECT_EQ(TargetInfo(target).Language, language) << "target " << target;
      EXPECT_EQ(TargetInfo(target).Platform, platform) << "target " << target;
    }
  }
  EXPECT_EQ(pairs_with_target, kTargetCount);
  for (uint16_t target = 1; target <= kTargetCount; ++target) {
    EXPECT_EQ(TargetOf(TargetInfo(target).Language, TargetInfo(target).Platform), target) << "target " << target;
  }
}

// Every target's texts are its language's and platform's joined; a slip in one table shows here.
TEST(TargetsTest, TargetTextsAreMadeOfLanguageAndPlatform) {
  for (uint16_t target = 1; target <= kTargetCount; ++target) {
    const TTargetInfo& info = TargetInfo(target);
    const TLanguageInfo& language = LanguageInfo(info.Language);
    const TPlatformInfo& platform = PlatformInfo(info.Platform);
    const std::string platform_title = info.Platform == 3 ? "Pure .NET FCL" : std::string(platform.DisplayName);
    EXPECT_EQ(info.Name, std::string(language.Name) + " for " + std::string(platform.Name)) << target;
    EXPECT_EQ(info.Folder, std::string(language.Folder) + "/" + std::string(platform.Folder)) << target;
    EXPECT_EQ(info.Title, std::string(language.Name) + " for " + platform_title) << target;
    EXPECT_EQ(info.Code, std::string(language.Code) + std::string(platform.Code)) << target;
  }
}

TEST(TargetsTest, DefaultValuesKeysInCatalogueOrder) {
  std::vector<std::string> keys;
  for (uint16_t target = 1; target <= kTargetCount; ++target) keys.emplace_back(TargetInfo(target).DefaultsKey);
  EXPECT_EQ(keys, (std::vector<std::string>{
                      "Delphi.5.Win32", "Delphi.6.Win32", "Delphi.7.Win32", "Delphi.8.VclNet", "Delphi.8.NetFcl",
                      "Delphi.2005.Win32", "Delphi.2005.VclNet", "Delphi.2005.NetFcl", "Delphi.2006.Win32",
                      "Delphi.2006.VclNet", "Delphi.2006.NetFcl", "Delphi.2007.Win32", "Delphi.2007.VclNet",
                      "Delphi.2007.NetFcl", "TurboDelphi.2006.Win32", "TurboDelphi.2006.VclNet",
                      "TurboDelphi.2006.NetFcl", "Chrome.NetFcl"}));
}

TEST(TargetsTest, MakeTargetFillsTheDescriptor) {
  struct Case {
    const char* name;
    uint16_t language, platform;
    TTarget expected;
  } const cases[] = {
      {"Delphi 7 for Win32", 3, 1, {3, 1, 3, "Delphi 7", "D7", "Win32", "W32", "Delphi 7 for Win32", "D7W32"}},
      {"Chrome for .NET",
       9,
       3,
       {9, 3, 18, "Chrome", "Chm", ".NET FCL", "FNet", "Chrome for Pure .NET FCL", "ChmFNet"}},
      {"Delphi 5 on .NET is no target", 1, 3, {1, 3, 0, "Delphi 5", "D5", ".NET FCL", "FNet", "", ""}},
      {"Chrome on Win32 is no target", 9, 1, {9, 1, 0, "Chrome", "Chm", "Win32", "W32", "", ""}},
      {"no platform", 4, 0, {4, 0, 0, "Delphi 8", "D8", "", "", "", ""}},
      {"language out of range", 10, 2, {0, 2, 0, "", "", "VCL.NET", "VNet", "", ""}},
      {"platform out of range", 5, 4, {5, 0, 0, "Delphi 2005", "D2005", "", "", "", ""}},
  };
  for (const Case& c : cases) EXPECT_EQ(Make_Target(c.language, c.platform), c.expected) << c.name;
}

TEST(TargetsTest, MakeTargetOfLanguageFillsOnlyTheLanguageHalf) {
  EXPECT_EQ(Make_Target(8), (TTarget{8, 0, 0, "TurboDelphi 2006", "TD2006", "", "", "", ""}));
  EXPECT_EQ(Make_Target(0), TTarget{});
  EXPECT_EQ(Make_Target(99), TTarget{});
}

TEST(TargetsTest, NumbersOutOfRangeGiveTheEmptyEntry) {
  EXPECT_EQ(LanguageInfo(10).Name, "");
  EXPECT_EQ(PlatformInfo(4).Name, "");
  EXPECT_EQ(TargetInfo(19).Name, "");
  EXPECT_EQ(TargetOf(10, 1), 0);
  EXPECT_EQ(TargetOf(1, 4), 0);
}

}  // namespace
}  // namespace tsaw
