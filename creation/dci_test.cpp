#include "creation/dci.h"

#include <gtest/gtest.h>

#include <regex>
#include <set>

#include "platform/runtime_text.h"

namespace tsaw::creation {
namespace {

using Lines = std::vector<std::string>;

// Hands out "ID-<n>" and remembers what it was asked for.
class CountingDci : public TDciGenerator {
 public:
  std::string NewDci(const TDciRequest& request) override {
    requests.push_back(request);
    return std::string(70, 'A') + std::to_string(requests.size());
  }
  std::vector<TDciRequest> requests;
};

TEST(FormatDciTest, CutsIntoPiecesOf64WithMarginAndPlus) {
  const std::string dci = std::string(64, 'a') + std::string(64, 'b') + "cc";
  EXPECT_EQ(FormatDci(dci, 4), "    '" + std::string(64, 'a') + "' +\r\n    '" + std::string(64, 'b') +
                                   "' +\r\n    'cc'");
  EXPECT_EQ(FormatDci("short", 0), "'short'");
  EXPECT_EQ(FormatDci(std::string(64, 'x'), 1), " '" + std::string(64, 'x') + "'");
}

struct RenewCase {
  const char* name;
  Lines form;
  Lines expected;
  Lines report;
};

const std::string kValue1 = "'" + std::string(64, 'A') + "' +";
const std::string kValue2 = "'AAAAAA1'";

class RenewDciTest : public ::testing::TestWithParam<RenewCase> {};

TEST_P(RenewDciTest, ReplacesOrInsertsTheIdentity) {
  const RenewCase& c = GetParam();
  Lines lines = c.form;
  Lines report;
  CountingDci dci;
  RenewDci(lines, "Host/Main.dfm", dci, [&report](const std::string& line) { report.push_back(line); });
  EXPECT_EQ(lines, c.expected) << c.name;
  EXPECT_EQ(report, c.report) << c.name;
  // The quick test that spares most forms the renewal must never turn away one it would change.
  EXPECT_EQ(MayHoldDciObject(platform::JoinLines(c.form)), !c.report.empty()) << c.name;
}

INSTANTIATE_TEST_SUITE_P(
    Forms, RenewDciTest,
    ::testing::Values(
        RenewCase{"ReplacesTheOldPropertyAndItsContinuation",
                  {"object Form1: TForm1", "  object tsaMan: TqrxTsaMan", "    Version = '1.0'",
                   "    DCI.UniqueID = ", "      'OLD-PART-ONE' +", "      'OLD-PART-TWO'",
                   "    DeepName = 'It''s mine'", "  end", "end"},
                  {"object Form1: TForm1", "  object tsaMan: TqrxTsaMan", "    Version = '1.0'",
                   "    DCI.UniqueID =", "      " + kValue1, "      " + kValue2,
                   "    DeepName = 'It''s mine'", "  end", "end"},
                  {"    Data extracted from Manager object:   Name: 'tsaMan'  Version: '1.0'  DeepName: 'It's mine'",
                   "    Looking for the old DCI...", "    Removing old DCI...", "      Inserting the new DCI...",
                   "    Formating DCI - left margin: 6"}},
        RenewCase{"InsertsBeforeTheFirstChildWhenThereWasNone",
                  {"inline Pin: TtsaPlugin", "  Version = '2.0'", "  object Item: TMenuItem", "  end", "end"},
                  {"inline Pin: TtsaPlugin", "  Version = '2.0'", "  DCI.UniqueID =", "    " + kValue1, "    " + kValue2,
                   "  object Item: TMenuItem", "  end", "end"},
                  {"    Data extracted from Plugin object:   Name: 'Pin'  Version: '2.0'  DeepName: ''",
                   "    Looking for the old DCI...", "      Inserting the new DCI...",
                   "    Formating DCI - left margin: 4"}},
        RenewCase{"LeavesOtherFormsAlone",
                  {"object Form1: TForm1", "  object X: TqrxTsa", "  end", "end"},
                  {"object Form1: TForm1", "  object X: TqrxTsa", "  end", "end"},
                  {}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(DciGeneratorTest, RandomIdentitiesAreWellFormedAndUnique) {
  auto generator = MakeRandomDciGenerator();
  const std::regex shape("([0-9A-F]{8}-){7}[0-9A-F]{8}");
  std::set<std::string> seen;
  for (int i = 0; i < 1000; ++i) {
    const std::string dci = generator->NewDci({"tsaMan", "1.0", "Host", "a.dfm"});
    EXPECT_TRUE(std::regex_match(dci, shape)) << dci;
    seen.insert(dci);
  }
  EXPECT_EQ(seen.size(), 1000u);
}

TEST(DciGeneratorTest, ReproducibleIdentitiesDependOnlyOnTheirInputs) {
  auto first = MakeReproducibleDciGenerator("1700000000");
  auto second = MakeReproducibleDciGenerator("1700000000");
  const TDciRequest request{"tsaMan", "1.0", "Host", "Delphi 7/Win32/Host/Main.dfm"};
  const std::string a = first->NewDci(request);
  EXPECT_EQ(a, second->NewDci(request));
  EXPECT_NE(first->NewDci(request), a) << "the call counter takes part";
  TDciRequest other = request;
  other.RelativePath = "Delphi 5/Win32/Host/Main.dfm";
  EXPECT_NE(MakeReproducibleDciGenerator("1700000000")->NewDci(other), a);
  EXPECT_NE(MakeReproducibleDciGenerator("1700000001")->NewDci(request), a);
}

}  // namespace
}  // namespace tsaw::creation
