#include "creation/project_file_cleaning.h"

#include <gtest/gtest.h>

namespace tsaw::creation {
namespace {

using Lines = std::vector<std::string>;

struct CleaningCase {
  const char* name;
  const char* ext;
  Lines in;
  Lines out;
  Lines report;
};

class RemoveTemplateDirectivesTest : public ::testing::TestWithParam<CleaningCase> {};

TEST_P(RemoveTemplateDirectivesTest, RewritesTheDefinesEntry) {
  const CleaningCase& c = GetParam();
  Lines lines = c.in;
  Lines report;
  Remove_Template_Directives(lines, c.ext, [&report](const std::string& line) { report.push_back(line); });
  EXPECT_EQ(lines, c.out) << c.name;
  EXPECT_EQ(report, c.report) << c.name;
}

const std::string kRemoving = "      Removing Directives from the ";

INSTANTIATE_TEST_SUITE_P(
    Cases, RemoveTemplateDirectivesTest,
    ::testing::Values(
        CleaningCase{"CfgLine",
                     ".cfg",
                     {"-$A8", "-dDEBUG;ddTemplate;;ddUseTLG;RELEASE", "-LUvcl"},
                     {"-$A8", "-DDEBUG;RELEASE", "-LUvcl"},
                     {kRemoving + ".cfg file...", "      Old line: 'DEBUG;ddTemplate;;ddUseTLG;RELEASE'",
                      "      New line: 'DEBUG;RELEASE'"}},
        CleaningCase{"CfgTwoLinesOnlyTheLowerOne",
                     ".cfg",
                     {"-DddUseTLG;A", "-E.", "-dddLogComments;B"},
                     {"-DddUseTLG;A", "-E.", "-DB"},
                     {kRemoving + ".cfg file...", "      Old line: 'ddLogComments;B'", "      New line: 'B'"}},
        CleaningCase{"DofOnlyWizardNamesLeavesEmptyValue",
                     ".dof",
                     {"[Directories]", "Conditionals=ddTemplate;ddUseTLG", "SearchPath="},
                     {"[Directories]", "Conditionals=", "SearchPath="},
                     {kRemoving + ".dof file...", "      Old line: 'ddTemplate;ddUseTLG'", "      New line: ''"}},
        CleaningCase{"BdsprojEmptyTags",
                     ".bdsproj",
                     {"  <Directories>", "    <Directories Name=\"Conditionals\">ddTemplate</Directories>"},
                     {"  <Directories>", "    <Directories Name=\"Conditionals\"></Directories>"},
                     {kRemoving + ".bdsproj file...", "      Old line: 'ddTemplate'", "      New line: ''"}},
        CleaningCase{"DprojAllLinesGetTheTopmostDefines",
                     ".dproj",
                     {"  <PropertyGroup>", "    <DCC_Define>DEBUG;ddUseTLG</DCC_Define>",
                      "      <DCC_Define>RELEASE</DCC_Define>", "\t<DCC_Define>ddTemplate;X</DCC_Define>"},
                     {"  <PropertyGroup>", "    <DCC_Define>DEBUG</DCC_Define>", "    <DCC_Define>DEBUG</DCC_Define>",
                      "    <DCC_Define>DEBUG</DCC_Define>"},
                     {kRemoving + ".dproj file...", "      Old line: 'DEBUG;ddUseTLG'", "      New line: 'DEBUG'"}},
        CleaningCase{"WizardNameInsideLongerNameLeavesTheRest",
                     ".cfg",
                     {"-d;ddUseTLGExtra;;ddLogInitFinit;"},
                     {"-DExtra"},
                     {kRemoving + ".cfg file...", "      Old line: ';ddUseTLGExtra;;ddLogInitFinit;'",
                      "      New line: 'Extra'"}},
        CleaningCase{"NoEntryLeavesTheFile",
                     ".dof",
                     {"[Directories]", "SearchPath=x"},
                     {"[Directories]", "SearchPath=x"},
                     {kRemoving + ".dof file..."}},
        CleaningCase{"EmptyEntryLeavesTheFile",
                     ".cfg",
                     {"-d"},
                     {"-d"},
                     {kRemoving + ".cfg file..."}}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(CleanDefinesTest, RemovesEveryWizardNameAndCollapsesSeparators) {
  EXPECT_EQ(CleanDefines("ddCommentedHeaders;;;ddLogPinCreation;A;;;B;ddLogFunctionResults;;"), "A;B");
  EXPECT_EQ(CleanDefines("ddTsa2205;ddPluginIndex_1"), "ddTsa2205;ddPluginIndex_1");
}

}  // namespace
}  // namespace tsaw::creation
