// The bounds that keep hostile answers from hanging or exhausting the wizard. A faster expansion
// must keep each of these outcomes and messages.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "model/answer_check.h"
#include "model/expand.h"
#include "model/expand_index.h"
#include "model/ini_file.h"
#include "model/startup.h"
#include "testing/wizard_builder.h"

namespace tsaw {
namespace {

using testing::MakeWizard;
using testing::SetValue;

std::string Repeated(const std::string& text, int times) {
  std::string out;
  for (int i = 0; i < times; ++i) out += text;
  return out;
}

// Each value holds 200 references to the one before: Author alone would be 1.6 GB.
TWizard MultiplyingWizard() {
  TWizard wizard = MakeWizard(1);
  SetValue(wizard.Variables[viProductName], std::string(200, 'p'), "");
  SetValue(wizard.Variables[viCompanyName], Repeated("#Product.Name#", 200), "");
  SetValue(wizard.Variables[viCopyright], Repeated("#Company.Name#", 200), "");
  SetValue(wizard.Variables[viAuthor], Repeated("#Copyright#", 200), "");
  return wizard;
}

TEST(ExpansionBounds, AReplacementThatWouldOutgrowTheBoundIsNeverBuilt) {
  std::string out;
  EXPECT_EQ(ReplaceAllInto("a#X#b#X#c", "#X#", "123", out, 9), 2u);
  EXPECT_EQ(out, "a123b123c");
  EXPECT_EQ(ReplaceAllInto("a#X#b#X#c", "#X#", "1234", out, 10), kReplacementTooLarge);
  EXPECT_LE(out.size(), 10u);
  // The text after the last occurrence counts too.
  EXPECT_EQ(ReplaceAllInto("#X#tail", "#X#", "12", out, 5), kReplacementTooLarge);
}

TEST(ExpansionBounds, GrowthIsAThousandTimesTheTextInWholeMegabytesFromOneToSixtyFour) {
  constexpr size_t kMB = size_t{1} << 20;
  EXPECT_EQ(ExpansionGrowthBound(0), kMB);
  EXPECT_EQ(ExpansionGrowthBound(1048), kMB);
  EXPECT_EQ(ExpansionGrowthBound(1049), 2 * kMB);
  EXPECT_EQ(ExpansionGrowthBound(64 * 1049), 64 * kMB);
  EXPECT_EQ(ExpansionGrowthBound(size_t{1} << 30), 64 * kMB);
  EXPECT_EQ(ExpansionLimitFor("#Author#"), 8 + kMB);
}

TEST(ExpansionBounds, StopsAtTheSizeBoundWithinOneReplacement) {
  const TWizard wizard = MultiplyingWizard();
  std::string res;
  // Author alone would be 1.6 GB: the replacement that would build it is never made.
  EXPECT_EQ(ExpandVar(wizard, "#Author#", false, res), TExpandOutcome::TooLarge);
  EXPECT_LE(res.size(), ExpansionLimitFor("#Author#"));
  EXPECT_EQ(ExpandVar(wizard, "#Copyright#", false, res), TExpandOutcome::TooLarge);
  // The same 8 MB fit the bound of a text of 9,000 bytes.
  const std::string long_text = std::string(9000, '.') + "#Copyright#";
  EXPECT_EQ(ExpandVar(wizard, long_text, false, res), TExpandOutcome::Complete);
  EXPECT_EQ(res.size(), 9000u + 200u * 200u * 200u);
}

TEST(ExpansionBounds, MessagesNameWhatWasExpandedAndTheBound) {
  EXPECT_EQ(ExpansionBoundMessage("Author", TExpandOutcome::TooLarge, 8), "The expansion of Author exceeds 1 MB.");
  EXPECT_EQ(ExpansionBoundMessage("'/t/a.pas'", TExpandOutcome::TooLarge, 1 << 20),
            "The expansion of '/t/a.pas' exceeds 64 MB.");
  EXPECT_EQ(ExpansionBoundMessage("Author", TExpandOutcome::TooManyPasses, 8),
            "The expansion of Author still refers to variables after its last pass (a circular reference).");
  EXPECT_EQ(ExpansionBoundMessage("Author", TExpandOutcome::Complete, 8), "");
}

TEST(ExpansionBounds, TheAnswerCheckNamesTheFirstAnswerBeyondABound) {
  EXPECT_EQ(FirstAnswerBeyondBounds(MultiplyingWizard()), "The expansion of Author exceeds 3 MB.");
  TWizard wizard = MakeWizard(2);
  SetValue(wizard.Variables[viProductName], "#Author#", "");
  EXPECT_EQ(FirstAnswerBeyondBounds(wizard), "");
  // A cycle in a plug-in's sub-item is found as well, by the sub-item's name.
  SetValue(*wizard.Variables[viPluginVersion].Pins[2], "(#Plugin[2].Version#)", "");
  EXPECT_EQ(FirstAnswerBeyondBounds(wizard), ExpansionBoundMessage("Plugin[2].Version", TExpandOutcome::TooManyPasses, 0));
  SetValue(*wizard.Variables[viPluginVersion].Pins[2], "2", "2");
  SetValue(wizard.Variables[viAuthor], "A", "x_vrAuthor");
  EXPECT_EQ(FirstAnswerBeyondBounds(wizard), ExpansionBoundMessage("Author", TExpandOutcome::TooManyPasses, 0));
}

TEST(CircularReferenceCheck, FindsAReferenceThatOtherValuesSpliceTogether) {
  TWizard wizard = MakeWizard(1);
  SetValue(wizard.Variables[viPathWindows], "", "");
  // Path.Windows comes first in number order: each pass forms #Product.Name# anew and, without
  // care, expands it before the pass ends, doubling the text.
  const std::string spliced = "#Prod#Path.Windows#uct.Name#";
  SetValue(wizard.Variables[viProductName], spliced + spliced, "");
  std::vector<std::string> messages;
  EXPECT_EQ(AnyCvrError(wizard, [&](const std::string& m) { messages.push_back(m); }), viProductName);
  EXPECT_EQ(messages, std::vector<std::string>{"2 - CVR (Circular Variable Reference) Error:  Product.Name"});
  EXPECT_EQ(FirstAnswerBeyondBounds(wizard), "");
}

TEST(CircularReferenceCheck, FindsSeparateCyclesOneCallEach) {
  TWizard wizard = MakeWizard(1);
  SetValue(wizard.Variables[viCompanyName], "#Manager.DeepName##Manager.DeepName#", "");
  SetValue(wizard.Variables[viManagerDeepName], "#Company.Name##Company.Name#", "");
  SetValue(wizard.Variables[viAuthor], "#Copyright##Copyright#", "");
  SetValue(wizard.Variables[viCopyright], "#Author##Author#", "");
  EXPECT_EQ(AnyCvrError(wizard, nullptr), viCompanyName);
  // The run checks once; what is left is refused before anything is written.
  EXPECT_EQ(FirstAnswerBeyondBounds(wizard), "The expansion of Author exceeds 1 MB.");
  EXPECT_EQ(AnyCvrError(wizard, nullptr), viAuthor);
  EXPECT_EQ(AnyCvrError(wizard, nullptr), 0);
  EXPECT_EQ(FirstAnswerBeyondBounds(wizard), "");
}

TEST(VariableTableBound, RefusesMoreDeclarationsThanNumbersCanHold) {
  const auto declarations = [](int count) {
    std::string text = "[Custom Variables]\n";
    for (int i = 0; i < count; ++i) text += "V" + std::to_string(i) + "=x\n";
    return TIniFile::FromText(text);
  };
  TWizard wizard = MakeWizard(1);
  Custom_or_Lookup_Variables(wizard, declarations(0xFFFE - 47), false);
  EXPECT_EQ(wizard.VarCount, 0xFFFE);
  EXPECT_EQ(AnyCvrError(wizard, nullptr), 0);
  EXPECT_EQ(FirstAnswerBeyondBounds(wizard), "");

  TWizard full = MakeWizard(1);
  try {
    Custom_or_Lookup_Variables(full, declarations(0xFFFF - 47), false);
    FAIL() << "accepted";
  } catch (const std::length_error& error) {
    EXPECT_EQ(std::string(error.what()),
              "\"\" declares 65488 variables in [Custom Variables]; the wizard holds at most 65534 variables "
              "in all (47 are already declared).");
  }
  EXPECT_EQ(full.VarCount, kInitialVariableCount);
}

}  // namespace
}  // namespace tsaw
