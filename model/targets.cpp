#include "model/targets.h"

#include <array>

namespace tsaw {
namespace {

constexpr std::array<TLanguageInfo, kLanguageCount + 1> kLanguages = {{
    {"", "", ""},
    {"Delphi 5", "Delphi 5", "D5"},
    {"Delphi 6", "Delphi 6", "D6"},
    {"Delphi 7", "Delphi 7", "D7"},
    {"Delphi 8", "Delphi 8", "D8"},
    {"Delphi 2005", "Delphi 2005", "D2005"},
    {"Delphi 2006", "Delphi 2006", "D2006"},
    {"Delphi 2007", "Delphi 2007", "D2007"},
    {"TurboDelphi 2006", "TurboDelphi 2006", "TD2006"},
    {"Chrome", "Chrome", "Chm"},
}};

constexpr std::array<TPlatformInfo, kPlatformCount + 1> kPlatforms = {{
    {"", "", "", ""},
    {"Win32", "Win32", "Win32", "W32"},
    {"VclNet", "VclNet", "VCL.NET", "VNet"},
    {"NetFcl", "NetFcl", ".NET FCL", "FNet"},
}};

constexpr std::array<TTargetInfo, kTargetCount + 1> kTargets = {{
    {0, 0, "", "", "", "", ""},
    {1, 1, "Delphi 5 for Win32", "Delphi 5/Win32", "Delphi 5 for Win32", "D5W32", "Delphi.5.Win32"},
    {2, 1, "Delphi 6 for Win32", "Delphi 6/Win32", "Delphi 6 for Win32", "D6W32", "Delphi.6.Win32"},
    {3, 1, "Delphi 7 for Win32", "Delphi 7/Win32", "Delphi 7 for Win32", "D7W32", "Delphi.7.Win32"},
    {4, 2, "Delphi 8 for VclNet", "Delphi 8/VclNet", "Delphi 8 for VCL.NET", "D8VNet", "Delphi.8.VclNet"},
    {4, 3, "Delphi 8 for NetFcl", "Delphi 8/NetFcl", "Delphi 8 for Pure .NET FCL", "D8FNet",
     "Delphi.8.NetFcl"},
    {5, 1, "Delphi 2005 for Win32", "Delphi 2005/Win32", "Delphi 2005 for Win32", "D2005W32",
     "Delphi.2005.Win32"},
    {5, 2, "Delphi 2005 for VclNet", "Delphi 2005/VclNet", "Delphi 2005 for VCL.NET", "D2005VNet",
     "Delphi.2005.VclNet"},
    {5, 3, "Delphi 2005 for NetFcl", "Delphi 2005/NetFcl", "Delphi 2005 for Pure .NET FCL", "D2005FNet",
     "Delphi.2005.NetFcl"},
    {6, 1, "Delphi 2006 for Win32", "Delphi 2006/Win32", "Delphi 2006 for Win32", "D2006W32",
     "Delphi.2006.Win32"},
    {6, 2, "Delphi 2006 for VclNet", "Delphi 2006/VclNet", "Delphi 2006 for VCL.NET", "D2006VNet",
     "Delphi.2006.VclNet"},
    {6, 3, "Delphi 2006 for NetFcl", "Delphi 2006/NetFcl", "Delphi 2006 for Pure .NET FCL", "D2006FNet",
     "Delphi.2006.NetFcl"},
    {7, 1, "Delphi 2007 for Win32", "Delphi 2007/Win32", "Delphi 2007 for Win32", "D2007W32",
     "Delphi.2007.Win32"},
    {7, 2, "Delphi 2007 for VclNet", "Delphi 2007/VclNet", "Delphi 2007 for VCL.NET", "D2007VNet",
     "Delphi.2007.VclNet"},
    {7, 3, "Delphi 2007 for NetFcl", "Delphi 2007/NetFcl", "Delphi 2007 for Pure .NET FCL", "D2007FNet",
     "Delphi.2007.NetFcl"},
    {8, 1, "TurboDelphi 2006 for Win32", "TurboDelphi 2006/Win32", "TurboDelphi 2006 for Win32", "TD2006W32",
     "TurboDelphi.2006.Win32"},
    {8, 2, "TurboDelphi 2006 for VclNet", "TurboDelphi 2006/VclNet", "TurboDelphi 2006 for VCL.NET",
     "TD2006VNet", "TurboDelphi.2006.VclNet"},
    {8, 3, "TurboDelphi 2006 for NetFcl", "TurboDelphi 2006/NetFcl", "TurboDelphi 2006 for Pure .NET FCL",
     "TD2006FNet", "TurboDelphi.2006.NetFcl"},
    {9, 3, "Chrome for NetFcl", "Chrome/NetFcl", "Chrome for Pure .NET FCL", "ChmFNet", "Chrome.NetFcl"},
}};

// Language by platform to target number; row and column 0 are the undefined entries.
constexpr uint16_t kTargetByPair[kLanguageCount + 1][kPlatformCount + 1] = {
    {0, 0, 0, 0},    //
    {0, 1, 0, 0},    // Delphi 5
    {0, 2, 0, 0},    // Delphi 6
    {0, 3, 0, 0},    // Delphi 7
    {0, 0, 4, 5},    // Delphi 8
    {0, 6, 7, 8},    // Delphi 2005
    {0, 9, 10, 11},  // Delphi 2006
    {0, 12, 13, 14}, // Delphi 2007
    {0, 15, 16, 17}, // TurboDelphi 2006
    {0, 0, 0, 18},   // Chrome
};

}  // namespace

const TLanguageInfo& LanguageInfo(uint16_t language) {
  return kLanguages[language <= kLanguageCount ? language : 0];
}

const TPlatformInfo& PlatformInfo(uint16_t platform) {
  return kPlatforms[platform <= kPlatformCount ? platform : 0];
}

const TTargetInfo& TargetInfo(uint16_t target) { return kTargets[target <= kTargetCount ? target : 0]; }

uint16_t TargetOf(uint16_t language, uint16_t platform) {
  if (language > kLanguageCount || platform > kPlatformCount) return 0;
  return kTargetByPair[language][platform];
}

TTarget Make_Target(uint16_t language) {
  TTarget target;
  if (language == 0 || language > kLanguageCount) return target;
  target.Language = language;
  target.LanguageName = LanguageInfo(language).Name;
  target.LanguageCode = LanguageInfo(language).Code;
  return target;
}

TTarget Make_Target(uint16_t language, uint16_t platform) {
  TTarget target = Make_Target(language);
  if (platform != 0 && platform <= kPlatformCount) {
    target.Platform = platform;
    target.PlatformName = PlatformInfo(platform).DisplayName;
    target.PlatformCode = PlatformInfo(platform).Code;
  }
  target.Number = TargetOf(language, platform);
  target.Title = TargetInfo(target.Number).Title;
  target.Code = TargetInfo(target.Number).Code;
  return target;
}

}  // namespace tsaw
