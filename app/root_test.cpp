#include "app/root.h"

#include <gtest/gtest.h>

#include <string>

#include "testing/temp_dir.h"

namespace tsaw::app {
namespace {

TEST(RootTest, ResolvesInOrderOfPrecedenceAndTellsWhetherTheUserChose) {
  struct Case {
    const char* name;
    std::string option;
    platform::MachineEnvironment environment;
    std::string path;
    bool chosen;
  } cases[] = {
      {"option wins", "/opt/r", {"", "/env/r", "/xdg", "/home/u"}, "/opt/r", true},
      {"environment", "", {"", "/env/r", "/xdg", "/home/u"}, "/env/r", true},
      {"XDG data home", "", {"", "", "/xdg", "/home/u"}, "/xdg/tessera", false},
      {"relative XDG data home is ignored", "", {"", "", "xdg", "/home/u"}, "/home/u/.local/share/tessera", false},
      {"home", "", {"", "", "", "/home/u"}, "/home/u/.local/share/tessera", false},
      {"nothing", "", {}, "", false},
  };
  for (const Case& c : cases) {
    GlobalOptions global;
    global.root = c.option;
    const FrameworkRoot root = ResolveRoot(global, c.environment);
    EXPECT_EQ(root.Path.string(), c.path) << c.name;
    EXPECT_EQ(root.Chosen, c.chosen) << c.name;
  }
}

TEST(RootTest, RelativeRootBecomesAbsolute) {
  GlobalOptions global;
  global.root = "some/root";
  EXPECT_EQ(ResolveRoot(global, {}).Path, (std::filesystem::current_path() / "some/root").lexically_normal());
}

class SeedTest : public ::testing::Test {
 protected:
  SeedTest() {
    dir_.Write("sample/TSA/Wizard/TSaW.ini", "[TSaW]\r\nConfig=Default\r\n");
    dir_.Write("sample/TSA/Wizard/Templates/Forms/T/Template.ini", "[Template]\r\n");
    dir_.Write("sample/TSA/User Projects/readme.txt", "sample readme");
  }
  std::filesystem::path Root() const { return dir_.path() / "root"; }
  std::filesystem::path Sample() const { return dir_.path() / "sample"; }
  testing::TempDir dir_;
};

TEST_F(SeedTest, SeedsOnceAndNeverOverwrites) {
  dir_.Write("root/TSA/User Projects/readme.txt", "the user's own");
  const SeedResult first = SeedFromSample(Root(), Sample());
  EXPECT_EQ(first.Outcome, SeedOutcome::Seeded) << first.Message;
  EXPECT_EQ(dir_.Read("root/TSA/Wizard/TSaW.ini"), "[TSaW]\r\nConfig=Default\r\n");
  EXPECT_EQ(dir_.Read("root/TSA/Wizard/Templates/Forms/T/Template.ini"), "[Template]\r\n");
  EXPECT_EQ(dir_.Read("root/TSA/User Projects/readme.txt"), "the user's own");
  EXPECT_FALSE(std::filesystem::exists(Root() / "TSA" / ".Wizard.seeding"));

  dir_.Write("root/TSA/Wizard/TSaW.ini", "[TSaW]\r\nConfig=Mine\r\n");
  std::filesystem::remove(Root() / "TSA/Wizard/Templates/Forms/T/Template.ini");
  const SeedResult second = SeedFromSample(Root(), Sample());
  EXPECT_EQ(second.Outcome, SeedOutcome::NotNeeded);
  EXPECT_EQ(dir_.Read("root/TSA/Wizard/TSaW.ini"), "[TSaW]\r\nConfig=Mine\r\n");
  EXPECT_FALSE(std::filesystem::exists(Root() / "TSA/Wizard/Templates/Forms/T/Template.ini"));
}

TEST_F(SeedTest, MissingSampleIsReportedAndNothingIsMade) {
  const SeedResult result = SeedFromSample(Root(), dir_.path() / "nowhere");
  EXPECT_EQ(result.Outcome, SeedOutcome::NoSample);
  EXPECT_EQ(result.Message, "No sample data found at \"" + (dir_.path() / "nowhere").string() + "\"; \"" +
                                (Root() / "TSA" / "Wizard").string() + "\" was not created.");
  EXPECT_FALSE(std::filesystem::exists(Root()));
}

}  // namespace
}  // namespace tsaw::app
