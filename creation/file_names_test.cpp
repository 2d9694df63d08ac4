#include "creation/file_names.h"

#include <gtest/gtest.h>

#include "model/expand.h"
#include "model/variables.h"

namespace tsaw::creation {
namespace {

TEST(PluginNumberOfFolderTest, TakesTheDigitsThatEndTheName) {
  const std::pair<const char*, int> cases[] = {{"Plugin2", 2}, {"Pin 03", 3}, {"Host", 1}, {"Plugins", 0},
                                               {"host", 0},    {"P12", 12},   {"2x", 0},   {"P1234567", 0}};
  for (const auto& [name, number] : cases) EXPECT_EQ(PluginNumberOfFolder(name), number) << name;
}

class ProjectFileNameTest : public ::testing::Test {
 protected:
  void SetUp() override {
    Init_Variables(wizard_);
    wizard_.RunData = std::make_unique<TRunData>();
    wizard_.RunData->PluginCount = 2;
    Set(viTemplatePrefix, "T101");
    Set(viProjectsPrefix, "Acme Co");
    Set(viHostProjectName, "Acme Host");
    Set(viProjectGroup, "vrProjects_Prefix_vrTarget");
    Set(viTarget, "D7W32");
    Set(viProductName, "../Up/Out");
    Set(viPluginProjectName, "AcmePin1");
  }
  void Set(uint16_t var_idx, const std::string& value) {
    wizard_.Variables[var_idx].Value = value;
    wizard_.Variables[var_idx].IdfValue = Str2Idf(value);
  }
  TWizard wizard_;
};

TEST_F(ProjectFileNameTest, ReplacesThePrefixPartsAndExpands) {
  const std::pair<const char*, const char*> cases[] = {
      {"T101_Host.dpr", "Acme_Host.dpr"},   {"T101_Group.bpg", "Acme_Co_D7W32.bpg"},
      {"T101_Shared.pas", "Acme_Co_Shared.pas"}, {"Main.dfm", "Main.dfm"},
      {"#Product.Name#.txt", ".._Up_Out.txt"}, {"t101_Host.dpr", "t101_Host.dpr"},
      {"T101_Pin2.dpr", "AcmePin1.dpr"},       {"T101_Pin.dof", "AcmePin1.dof"}};
  for (const auto& [name, expected] : cases) EXPECT_EQ(ProjectFileName(wizard_, name), expected) << name;
}

}  // namespace
}  // namespace tsaw::creation
