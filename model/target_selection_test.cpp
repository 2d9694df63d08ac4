#include "model/target_selection.h"

#include <gtest/gtest.h>

#include "model/variables.h"

namespace tsaw {
namespace {

// The value, stored copy and identifier form of variables 16, 17 and 18, and the current numbers.
std::string Current(const TWizard& wizard) {
  std::string text;
  for (uint16_t var : {viTargetLanguage, viTargetPlatform, viTarget}) {
    const TVariableItem& item = wizard.Variables[var];
    text += item.Value + "/" + item.DefaultValue + "/" + item.IdfValue + " ";
  }
  return text + std::to_string(wizard.CurrentLanguage) + " " + std::to_string(wizard.CurrentTarget);
}

class TargetSelectionTest : public ::testing::Test {
 protected:
  TargetSelectionTest() { Init_Variables(wizard_); }
  TWizard wizard_;
};

TEST_F(TargetSelectionTest, SelectsByCatalogueCodes) {
  Select_Target(wizard_, 3);
  EXPECT_EQ(Current(wizard_), "D7/D7/D7 W32/W32/W32 D7W32/D7W32/D7W32 3 3");
  Select_Target(wizard_, 18);
  EXPECT_EQ(Current(wizard_), "Chm/Chm/Chm FNet/FNet/FNet ChmFNet/ChmFNet/ChmFNet 9 18");
  Select_Language(wizard_, 5);
  EXPECT_EQ(Current(wizard_), "D2005/D2005/D2005 // // 5 0");
  Select_Target(wizard_, 3);
  Select_No_Target(wizard_);
  EXPECT_EQ(Current(wizard_), "// // // 0 0");
  Select_Target(wizard_, 19);
  EXPECT_EQ(Current(wizard_), "// // // 0 0");
}

TEST_F(TargetSelectionTest, LowestCheckedTargetWinsAndNoneChangesNothing) {
  Select_Target(wizard_, 12);
  Update_Target_Variables(wizard_);
  EXPECT_EQ(wizard_.Variables[viTarget].Value, "D2007W32");
  wizard_.Targets[9].Checked = true;
  wizard_.Targets[2].Checked = true;
  Update_Target_Variables(wizard_);
  EXPECT_EQ(wizard_.Variables[viTarget].Value, "D6W32");
}

}  // namespace
}  // namespace tsaw
