// The three-way plan: each combination of base, ours and theirs gets its fate, and nothing is
// written while planning.

#include "update/plan.h"

#include <gtest/gtest.h>

#include <optional>

#include "testing/temp_dir.h"

namespace tsaw::update {
namespace {
using generations::HashObject;
using generations::TObjectId;

struct Case {
  const char* name;
  std::optional<std::string> base, ours, theirs;
  TFate fate;
  TWrite write;
};

// A failing case is named rather than dumped byte by byte.
void PrintTo(const Case& c, std::ostream* out) { *out << c.name; }

const std::string kBinary("\x00\x01\x02", 3);

class PlanTest : public ::testing::TestWithParam<Case> {};

TEST_P(PlanTest, GivesEachFileItsFate) {
  const Case& c = GetParam();
  tsaw::testing::TempDir dir;
  generations::TFiles base, theirs;
  std::map<TObjectId, std::string> contents;
  if (c.base) contents[base["Host/A.pas"] = HashObject("blob", *c.base)] = *c.base;
  if (c.theirs) {
    dir.Write("new/Host/A.pas", *c.theirs);
    theirs["Host/A.pas"] = HashObject("blob", *c.theirs);
  }
  if (c.ours) dir.Write("set/Host/A.pas", *c.ours);
  dir.MakeDir("set");
  const TUpdatePlan plan = PlanUpdate({base, [&contents](const TObjectId& id) { return contents.at(id); },
                                       dir.path() / "set", theirs, dir.path() / "new"});
  if (!c.base && !c.theirs) {
    EXPECT_TRUE(plan.Files.empty()) << c.name;
    return;
  }
  ASSERT_EQ(plan.Files.size(), 1u) << c.name;
  EXPECT_EQ(plan.Files[0].Path, "Host/A.pas");
  EXPECT_EQ(plan.Files[0].Fate, c.fate) << c.name;
  EXPECT_EQ(plan.Files[0].Write, c.write) << c.name;
  EXPECT_EQ(dir.Read("set/Host/A.pas"), c.ours.value_or("")) << c.name;
}

const std::string b = "a\r\nb\r\nc\r\nd\r\n";
INSTANTIATE_TEST_SUITE_P(
    Combinations, PlanTest,
    ::testing::Values(
        Case{"Unchanged", b, b, b, TFate::Kept, TWrite::Nothing},
        Case{"OnlyTemplateChanged", b, b, "a\r\nB\r\nc\r\nd\r\n", TFate::Updated, TWrite::Theirs},
        Case{"OnlyDeveloperChanged", b, "A\r\nb\r\nc\r\nd\r\n", b, TFate::Kept, TWrite::Nothing},
        Case{"BothTheSame", b, "A\r\nb\r\nc\r\nd\r\n", "A\r\nb\r\nc\r\nd\r\n", TFate::Kept, TWrite::Nothing},
        Case{"BothApart", b, "A\r\nb\r\nc\r\nd\r\n", "a\r\nb\r\nc\r\nD\r\n", TFate::Merged, TWrite::Merged},
        Case{"BothOverlapping", b, "a\r\nX\r\nc\r\nd\r\n", "a\r\nY\r\nc\r\nd\r\n", TFate::Conflict, TWrite::Merged},
        Case{"BinaryBoth", kBinary, kBinary + "1", kBinary + "2", TFate::Conflict, TWrite::Beside},
        Case{"TemplateDropsUnchanged", b, b, std::nullopt, TFate::Removed, TWrite::Remove},
        Case{"TemplateDropsEdited", b, "edited\r\n", std::nullopt, TFate::Kept, TWrite::Nothing},
        Case{"DeveloperRemovedUnchanged", b, std::nullopt, b, TFate::Kept, TWrite::Nothing},
        Case{"DeveloperRemovedTemplateChanged", b, std::nullopt, "new\r\n", TFate::Conflict, TWrite::Beside},
        Case{"NewFile", std::nullopt, std::nullopt, b, TFate::Added, TWrite::Theirs},
        Case{"AddedByBothAlike", std::nullopt, b, b, TFate::Kept, TWrite::Nothing},
        Case{"AddedByBothDifferently", std::nullopt, "mine\r\n", b, TFate::Conflict, TWrite::Beside},
        Case{"OnlyTheDevelopersFile", std::nullopt, "mine\r\n", std::nullopt, TFate::Kept, TWrite::Nothing}),
    [](const ::testing::TestParamInfo<Case>& info) { return std::string(info.param.name); });

TEST(PlanTargetTest, TheNewGenerationGoesBesideAConflictingFile) {
  EXPECT_EQ((TFileAction{"Host/A.res", TFate::Conflict, TWrite::Beside, {}}).Target(), "Host/A.res.tsaw-new");
  EXPECT_EQ((TFileAction{"Host/A.pas", TFate::Kept, TWrite::Nothing, {}}).Target(), "");
}

}  // namespace
}  // namespace tsaw::update
