#pragma once
// Test helpers: framework roots for the tests. One whose wizard folder holds a configuration, a
// good and a bad template in one category, and a Job that names the good template; one with a
// single small template that a creation run writes quickly.

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

// The template "Apps/Tiny" below `root` (prefix T001, Delphi 7 for Win32 only, one Host project),
// whose Project Set goes to `out`/Rocket. Returns the template's folder relative to `root`.
inline std::string WriteTinyTemplate(const TempDir& root, const std::string& out) {
  std::string targets;
  for (const char* key : {"Delphi.5.Win32", "Delphi.6.Win32", "Delphi.8.VclNet", "Delphi.8.NetFcl",
                          "Delphi.2005.Win32", "Delphi.2005.VclNet", "Delphi.2005.NetFcl", "Delphi.2006.Win32",
                          "Delphi.2006.VclNet", "Delphi.2006.NetFcl", "Delphi.2007.Win32", "Delphi.2007.VclNet",
                          "Delphi.2007.NetFcl", "TurboDelphi.2006.Win32", "TurboDelphi.2006.VclNet",
                          "TurboDelphi.2006.NetFcl", "Chrome.NetFcl"}) {
    targets += std::string(key) + "=D\n";
  }
  const std::string t = "TSA/Wizard/Templates/Apps/Tiny/";
  root.Write(t + "Template.ini", "[Template]\nName=Tiny\nPrefix=T001\nAuthor=a\nPurpose=p\nDesc=d\n"
                                 "[Default Values]\nProduct.Name=Rocket\nProjects.Prefix=Acme\n"
                                 "Output.BaseFolder=" + out + "\nDelphi.7.Win32=R\n" + targets);
  root.Write(t + "Delphi 7/Win32/Host/T001_Host.dpr", "program vrHost_ProjectName;\nend.\n");
  root.Write("TSA/Wizard/TSaW.ini", "[TSaW]\nConfig=Default\n");
  return t;
}

}  // namespace tsaw::testing
