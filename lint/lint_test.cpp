// The whole lint on a template with planted defects, and on the shipped sample templates.

#include "lint/lint.h"

#include <gtest/gtest.h>

#include <string>

#include "model/variables.h"
#include "testing/temp_dir.h"
#include "testing/template_targets.h"

namespace tsaw::lint {
namespace {

const TProgramInfo kProgram{"Tessera Wizard", "6.01"};

std::string Lint(TWizard& wizard, const std::filesystem::path& folder) {
  std::string out;
  for (const TFinding& finding : LintTemplate(wizard, kProgram, folder)) {
    out += FormatFinding("", finding) + "\n";
  }
  return out;
}

class LintTest : public ::testing::Test {
 protected:
  LintTest() {
    Init_Variables(wizard);
    wizard.ConfigFile = dir.Write("TSaW.Default.ini", "[Custom Variables]\r\nWebsite=Title=Site\xC2\xA6https://x\r\n").string();
  }
  testing::TempDir dir;
  TWizard wizard;
};

TEST_F(LintTest, FindsEveryPlantedDefect) {
  dir.Write("Bad/Template.ini",
            "[Template]\r\nName=Bad\r\nPrefix=X12\r\nPurpose=p\r\nDesc=d\r\nPluginCount=2\r\n"
            "[Custom Variables]\r\nGreeting=Title=Greeting\xC2\xA6Hello\r\n"
            "[Default Values]\r\n"
            "Product.Nmae=Oops\r\n"
            "Delphi.7.Win32=r\r\n"
            "Delphi.2007.Win32=R\r\n"
            "Logging.UseTLG=yes \xC2\xA6 $ReadOnly\r\n"
            "Plugin.Version=1.0\r\n"
            "Plugin[3].Version=2\r\n" + testing::OtherTargetsNotAllowed({"Delphi.7.Win32", "Delphi.2007.Win32"}));
  dir.Write("Bad/Delphi 7/Win32/Host/X12_Host.dpr",
            "program X12_Host;\r\n{$IFDEF ddUseTGL}\r\nuses Logger;\r\n{$ENDIF}\r\n{$IFDEF DDUseTLG}{$ENDIF}\r\n"
            "{$IFDEF ddPluginIndex_2}{$ELSE}{$ENDIF}{$IFDEF ddTargetLanguage_D7}{$ENDIF}\r\nbegin end.\r\n");
  dir.Write("Bad/Delphi 7/Win32/Host/Main.pas",
            "unit Main;\r\n{$ELSE}\r\nconst S = '#Product.Nmae#' + #13#10 + '#Custom.Greeting# #Custom.Website#';\r\n"
            "{$ENDIF}\r\nvar vrProduct_Nmae, vrCustom_Greeting: Integer;\r\n{$IFDEF DEBUG}\r\nend.\r\n");
  dir.Write("Bad/Delphi 7/Win32/Host/Host.dproj", "<DCC_Define>ddUseTGL</DCC_Define>\r\n");
  dir.Write("Bad/Delphi 7/Win32/Host/Form.dfm", "\xFF\r\nbinary");
  dir.Write("Bad/Delphi 7/Win32/Host/X12_Host.dsk", "ide state");
  dir.Write("Bad/Delphi 7/Win32/LICENSE", "MIT");
  dir.Write("Bad/Delphi 7/Win32/Helper.dll", "MZ");
  dir.Write("Bad/.history/Old.pas", "{$ELSE}");
  dir.Write("Bad/TplHelper/Notes.pas", "{$ELSE}");
  EXPECT_EQ(Lint(wizard, dir.path() / "Bad"),
            "Template.ini:1: error: Template \"Author\" key is missing from INI \"Template\" section. "
            "(errFieldMissingFromTemplateSection)\n"
            "Template.ini:3: error: Prefix \"X12\" is not \"T\" followed by a number from 001 to 999 (errInvalidPrefix)\n"
            "Template.ini:10: warning: Unknown key \"Product.Nmae\": not a \"Default Values\" key; it is ignored\n"
            "Template.ini:11: warning: \"Delphi.7.Win32=r\": a target takes D (not allowed), R (required) or 1 "
            "(selected), letter case as written; this value makes the target allowed but not selected\n"
            "Template.ini:12: error: target \"Delphi 2007 for Win32\" is required (Delphi.2007.Win32) but the "
            "template has no folder \"Delphi 2007/Win32\"\n"
            "Template.ini:13: warning: \"Logging.UseTLG=yes \xC2\xA6 $ReadOnly\" reads as False (true is yes, y, "
            "true, t or 1)\n"
            "Template.ini:14: warning: \"Plugin.Version\" applies only in a configuration file; a template names "
            "the plug-in (\"Plugin[1].Version\")\n"
            "Template.ini:15: warning: Plug-in number in \"Plugin[3].Version\" is out of range: the template has 2 "
            "plug-ins; it is ignored\n"
            "Delphi 7/Win32/Helper.dll: warning: has the extension .dll, which a run skips: it is never written\n"
            "Delphi 7/Win32/Host/Form.dfm:1: error: is a binary form: a run refuses it (only text forms are supported)\n"
            "Delphi 7/Win32/Host/Host.dproj: error: project file whose name does not start with the template's "
            "prefix \"X12\" (errPrefixMismatch)\n"
            "Delphi 7/Win32/Host/Main.pas:2: error: {$ELSE} without an open {$IFDEF} or {$IFNDEF}: a run fails on "
            "this file\n"
            "Delphi 7/Win32/Host/Main.pas:3: warning: #Product.Nmae# names no variable of the wizard, the template "
            "or the configuration: it is written as it stands\n"
            "Delphi 7/Win32/Host/Main.pas:4: error: {$ENDIF} without an open {$IFDEF} or {$IFNDEF}: the text since "
            "the directive before it is dropped\n"
            "Delphi 7/Win32/Host/Main.pas:5: warning: vrProduct_Nmae begins with no variable's identifier token: it "
            "is written as it stands\n"
            "Delphi 7/Win32/Host/Main.pas:6: error: {$IFDEF DEBUG} is never closed by {$ENDIF}: the directive is "
            "dropped and the rest of the file kept whole\n"
            "Delphi 7/Win32/Host/X12_Host.dpr:2: warning: \"ddUseTGL\" is defined by no run: the condition is "
            "always false\n"
            "Delphi 7/Win32/Host/X12_Host.dpr:5: warning: {$IFDEF DDUseTLG} is not a wizard directive (only names "
            "that begin with a lower-case \"dd\" are): it stays in the generated file as written\n"
            "Delphi 7/Win32/LICENSE: warning: has no extension: a run never writes it\n");
}

TEST_F(LintTest, AFolderWithoutTemplateIniIsNoTemplate) {
  dir.MakeDir("Empty");
  EXPECT_EQ(Lint(wizard, dir.path() / "Empty"), "Template.ini: error: is missing: the folder is no template\n");
}

TEST(LintSampleTest, TheShippedGoodTemplatesAreClean) {
  const std::filesystem::path wizard_folder = std::filesystem::path(TSAW_SAMPLE_DIR) / "TSA/Wizard";
  for (const char* name : {"Applications/Host with Three Plugins", "Plug-ins/Single Plugin",
                           "Plug-ins/Service Plugin"}) {
    TWizard wizard;
    Init_Variables(wizard);
    wizard.ConfigFile = (wizard_folder / "TSaW.Default.ini").string();
    EXPECT_EQ(Lint(wizard, wizard_folder / "Templates" / name), "") << name;
  }
}

TEST(LintSampleTest, TheShippedBadTemplateHasItsFindings) {
  const std::filesystem::path wizard_folder = std::filesystem::path(TSAW_SAMPLE_DIR) / "TSA/Wizard";
  TWizard wizard;
  Init_Variables(wizard);
  wizard.ConfigFile = (wizard_folder / "TSaW.Default.ini").string();
  EXPECT_EQ(Lint(wizard, wizard_folder / "Templates/Broken/Missing Author"),
            "Template.ini: error: target \"Delphi 7 for Win32\" is required (Delphi.7.Win32) but the template has "
            "no folder \"Delphi 7/Win32\"\n"
            "Template.ini: warning: targets selected by default have no folder in the template (\"Delphi 5/Win32\", "
            "\"Delphi 6/Win32\", \"Delphi 8/VclNet\", \"Delphi 8/NetFcl\", \"Delphi 2005/Win32\", "
            "\"Delphi 2005/VclNet\", \"Delphi 2005/NetFcl\", \"Delphi 2006/Win32\", \"Delphi 2006/VclNet\", "
            "\"Delphi 2006/NetFcl\", \"Delphi 2007/Win32\", \"Delphi 2007/VclNet\", \"Delphi 2007/NetFcl\", "
            "\"TurboDelphi 2006/Win32\", \"TurboDelphi 2006/VclNet\", \"TurboDelphi 2006/NetFcl\", "
            "\"Chrome/NetFcl\"); a target the template does not offer takes D in \"Default Values\"\n"
            "Template.ini:3: error: Template \"Author\" key is missing from INI \"Template\" section. "
            "(errFieldMissingFromTemplateSection)\n"
            "Template.ini:8: error: \"PluginCount\" is not a number from 1 to 999 (errInvalidPluginCount)\n");
}

}  // namespace
}  // namespace tsaw::lint
