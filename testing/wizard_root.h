#pragma once
// Test helper: a framework root whose wizard folder holds a configuration, a good and a bad
// template in one category, and a Job that names the good template.

#include <string>

#include "testing/temp_dir.h"

namespace tsaw::testing {

inline constexpr const char* kGoodTemplate = "Demo/Good One";
inline constexpr const char* kBadTemplate = "Demo/Broken One";

// Writes the wizard folder below `root` and returns the Job file's full name.
inline std::string WriteWizardRoot(const TempDir& root) {
  root.Write("TSA/Wizard/TSaW.ini", "[TSaW]\r\nConfig=Default\r\n");
  root.Write("TSA/Wizard/TSaW.Default.ini", "[Default Values]\r\nAuthor=From Config\r\n");
  root.Write("TSA/Wizard/Templates/Demo/Good One/Template.ini",
             "[Template]\r\nName=Good\r\nPrefix=T777\r\nAuthor=Ann Author\r\nPurpose=Testing\r\n"
             "Desc=Line one \xC2\xB6 line two\r\nPluginCount=2\r\n"
             "[Default Values]\r\nProduct.Name=From Template\r\n");
  root.Write("TSA/Wizard/Templates/Demo/Broken One/Template.ini",
             "[Template]\r\nName=Bad\r\nPrefix=T778\r\nPurpose=Testing\r\nDesc=No author\r\n");
  return root
      .Write("TSA/Wizard/Jobs/Job.001.ini",
             "[Job]\r\nTemplate=Demo/Good One\r\n[Default Values]\r\nProduct.Name=From Job\r\n")
      .string();
}

}  // namespace tsaw::testing
