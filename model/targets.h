#pragma once
// The fixed catalogue of languages (IDE versions), platforms and targets. Numbers start at 1;
// 0 is the empty "undefined" entry. Folders are relative paths without a trailing separator; a
// target's folder joins its language and platform folders with '/'.

#include <cstdint>
#include <string>
#include <string_view>

namespace tsaw {

inline constexpr uint16_t kLanguageCount = 9;
inline constexpr uint16_t kPlatformCount = 3;
inline constexpr uint16_t kTargetCount = 18;

struct TLanguageInfo {
  std::string_view Name;    // "Delphi 7"
  std::string_view Folder;  // "Delphi 7"
  std::string_view Code;    // "D7"
};

struct TPlatformInfo {
  std::string_view Name;         // "VclNet"
  std::string_view Folder;       // "VclNet"
  std::string_view DisplayName;  // "VCL.NET"
  std::string_view Code;         // "VNet"
};

struct TTargetInfo {
  uint16_t Language = 0;
  uint16_t Platform = 0;
  std::string_view Name;         // "Delphi 8 for NetFcl"
  std::string_view Folder;       // "Delphi 8/NetFcl"
  std::string_view Title;        // "Delphi 8 for Pure .NET FCL"
  std::string_view Code;         // "D8FNet"
  std::string_view DefaultsKey;  // key in "Default Values" and Job files: "Delphi.8.NetFcl"
};

// Catalogue entries; a number out of range gives the empty entry 0.
const TLanguageInfo& LanguageInfo(uint16_t language);
const TPlatformInfo& PlatformInfo(uint16_t platform);
const TTargetInfo& TargetInfo(uint16_t target);

// The inverse table: the target of a language on a platform, 0 when that pair does not exist or
// either number is out of range.
uint16_t TargetOf(uint16_t language, uint16_t platform);

// A target descriptor as the pages and the creation run use it.
struct TTarget {
  uint16_t Language = 0;
  uint16_t Platform = 0;
  uint16_t Number = 0;  // 0: no such target
  std::string LanguageName;
  std::string LanguageCode;
  std::string PlatformName;  // the display name, "VCL.NET"
  std::string PlatformCode;
  std::string Title;
  std::string Code;

  bool operator==(const TTarget&) const = default;
};

// Fills the descriptor from the tables. A language or platform out of range leaves its half
// empty; a pair that is no target (Delphi 5 on .NET) leaves Number 0 and Title and Code empty.
TTarget Make_Target(uint16_t language, uint16_t platform);
// Fills only the language half (number, name and code).
TTarget Make_Target(uint16_t language);

}  // namespace tsaw
