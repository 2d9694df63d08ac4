// The checks of one file's text, with the names a run defines given by the test.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "lint/checks.h"
#include "testing/wizard_builder.h"

namespace tsaw::lint {
namespace {

// The findings of both checks on `text`, formatted as the command line prints them.
std::string Lint(std::string_view text) {
  TWizard wizard = tsaw::testing::MakeWizard(2);
  TLintContext context{wizard, "T", {"ddusetlg", "ddtemplate"}, {"Product.Name", "Plugin[2].Version"},
                       {"vrProduct_Name", "vrPlugin2_Version"}, {}};
  CheckDirectives(context, "u.pas", text);
  CheckReferences(context, "u.pas", text);
  std::string out;
  for (const TFinding& finding : context.findings) out += FormatFinding("", finding) + "\n";
  return out;
}

TEST(DirectiveCheckTest, BalancedBlocksOfEveryKindAreClean) {
  EXPECT_EQ(Lint("{$IFDEF ddUseTLG}a{$ELSE}b{$ENDIF}\r\n{$IFNDEF DEBUG}\r\n{$ifdef ddTemplate}x{$endif}\r\n"
                 "{$ENDIF}\r\n{$R *.res}{$DEFINE ddUseTLG}{$UNDEF RELEASE}\r\n"),
            "");
}

TEST(DirectiveCheckTest, ReportsEachUnbalancedDirectiveOnItsLine) {
  EXPECT_EQ(Lint("{$ELSE}\r\n{$ENDIF}\nx\r{$IFDEF A}{$ELSE}{$ELSE}\r\n{$IFNDEF B}\r\n{$ENDIF}\r\n"),
            "u.pas:1: error: {$ELSE} without an open {$IFDEF} or {$IFNDEF}: a run fails on this file\n"
            "u.pas:2: error: {$ENDIF} without an open {$IFDEF} or {$IFNDEF}: the text since the directive "
            "before it is dropped\n"
            "u.pas:4: error: a second {$ELSE} in the block opened on line 4\n"
            "u.pas:4: error: {$IFDEF A} is never closed by {$ENDIF}: the directive is dropped and the rest "
            "of the file kept whole\n");
}

TEST(DirectiveCheckTest, ReportsNamesNoRunDefinesAndCapitalisedWizardNames) {
  EXPECT_EQ(Lint("{$IFDEF ddUseTGL}{$ENDIF}\r\n{$IFNDEF ddusetlg}{$ENDIF}{$DEFINE ddNew}\r\n"
                 "{$IFDEF DDUseTLG}{$ENDIF}{$IFDEF DDOther}{$ENDIF}{$IFDEF ddPluginExtension_dll}{$ENDIF}\r\n"
                 "{$IFDEF ddUseTLG\r\n"),
            "u.pas:1: warning: \"ddUseTGL\" is defined by no run: the condition is always false\n"
            "u.pas:2: warning: \"ddNew\" is defined by no run: it changes nothing\n"
            "u.pas:3: warning: {$IFDEF DDUseTLG} is not a wizard directive (only names that begin with a "
            "lower-case \"dd\" are): it stays in the generated file as written\n"
            "u.pas:4: error: {$IFDEF has no closing \"}\": its name is read as empty\n"
            "u.pas:4: error: {$IFDEF is never closed by {$ENDIF}: the directive is dropped and the rest of the "
            "file kept whole\n");
}

TEST(ReferenceCheckTest, ReportsNamesAndTokensOfNoVariable) {
  EXPECT_EQ(Lint("#Product.Name# #Plugin[2].Version# #13#10 '#' vrProduct_Name_Shared vrPlugin2_Version\r\n"
                 "#Product.Nmae# vrProduct_Nmae avroom vroom\r\n#Plugin[3].Version#"),
            "u.pas:2: warning: #Product.Nmae# names no variable of the wizard, the template or the "
            "configuration: it is written as it stands\n"
            "u.pas:2: warning: vrProduct_Nmae begins with no variable's identifier token: it is written as "
            "it stands\n"
            "u.pas:3: warning: #Plugin[3].Version# names no variable of the wizard, the template or the "
            "configuration: it is written as it stands\n");
}

}  // namespace
}  // namespace tsaw::lint
