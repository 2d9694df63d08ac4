#include "pages/lookup_list.h"

#include <gtest/gtest.h>

#include "testing/wizard_builder.h"

namespace tsaw {
namespace {

using Values = std::vector<std::string>;

TEST(LookupValuesTest, SortedOnceEachIgnoringCaseAndBlankLines) {
  EXPECT_EQ(LookupValues("B\r\nA\r\nB"), (Values{"A", "B"}));
  EXPECT_EQ(LookupValues("beta\nAlpha\r\n\r\nalpha\nTom & Jerry\r\n"), (Values{"Alpha", "beta", "Tom & Jerry"}));
  EXPECT_EQ(LookupValues(""), Values{});
}

// A wizard whose Author has the look-up variable "Lookup.Author" holding `list`.
TWizard WizardWithAuthorLookup(const std::string& list) {
  TWizard wizard = testing::MakeWizard(1);
  testing::AddLookup(wizard, viAuthor, "Authors", "", list);
  return wizard;
}

TEST(LookupForTest, OffersTheExpandedValuesOfTheRelatedLookupVariable) {
  TWizard wizard = WizardWithAuthorLookup("#Company.Name# staff\r\nAnn");
  testing::SetVar(wizard, viCompanyName, "Acme");
  const std::optional<TLookupRequest> request = LookupFor(wizard, viAuthor);
  ASSERT_TRUE(request);
  EXPECT_EQ(request->Caption, "Authors");
  EXPECT_EQ(request->Values, (Values{"Acme staff", "Ann"}));
}

TEST(LookupForTest, NothingWithoutLookupVariableOrValues) {
  TWizard wizard = WizardWithAuthorLookup("#Copyright#");
  EXPECT_FALSE(LookupFor(wizard, viAuthor)) << "expands to nothing";
  EXPECT_FALSE(LookupFor(wizard, viCopyright)) << "no look-up variable";
  EXPECT_FALSE(LookupFor(wizard, 60000)) << "no such variable";
}

}  // namespace
}  // namespace tsaw
