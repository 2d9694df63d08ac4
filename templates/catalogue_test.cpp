#include "templates/catalogue.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "model/variables.h"
#include "testing/temp_dir.h"

namespace tsaw {
namespace {

namespace fs = std::filesystem;

std::string TemplateIni(const std::string& prefix, const std::string& extra = "") {
  return "[Template]\r\nName=" + prefix + "\r\nPrefix=" + prefix +
         "\r\nAuthor=Ann\r\nPurpose=Tests\r\nDesc=A template\r\n" + extra;
}

// The tree as `tsaw templates` prints it: indented captions, expanded marks as "+".
void Render(const TCatalogueNode& node, int depth, std::string& out, bool show_expanded) {
  for (const auto& child : node.Children) {
    out += std::string(2 * depth, ' ') + child->Caption;
    if (show_expanded && child->Expanded) out += " +";
    out += "\n";
    Render(*child, depth + 1, out, show_expanded);
  }
}

std::string Render(const TCatalogue& catalogue, bool show_expanded = false) {
  std::string out;
  Render(catalogue.Root(), 0, out, show_expanded);
  return out;
}

class CatalogueTest : public ::testing::Test {
 protected:
  CatalogueTest() {
    Init_Variables(wizard);
    wizard.TemplatesFolder = (dir.path() / "Templates").string() + "/";
    dir.MakeDir("Templates");
    wizard.RefreshStepButtons = [this](bool valid) { reported.push_back(valid); };
  }
  void Write(const std::string& relative, const std::string& content) {
    dir.Write("Templates/" + relative, content);
  }
  std::string PathOf(const std::string& relative) const { return wizard.TemplatesFolder + relative; }
  TCatalogueNode* NodeOf(TCatalogue& catalogue, const std::string& relative) {
    TCatalogueNode* node = catalogue.Find_Node(PathOf(relative));
    EXPECT_NE(node, nullptr) << relative;
    return node;
  }
  void WriteStandardTree() {
    Write("Forms/MDI/Template.ini", TemplateIni("T101", "PluginCount=2\r\n"));
    Write("Forms/MDI/Nested/Template.ini", TemplateIni("T999"));
    Write("Forms/SDI/Template.ini", "[Template]\r\nName=x\r\nPrefix=T102\r\n");
    Write("Services/Logger/Template.ini", TemplateIni("T103"));
    dir.MakeDir("Templates/Services/Empty");
    Write("alpha/Beta/Template.ini", TemplateIni("T104"));
    Write(".hidden/Secret/Template.ini", TemplateIni("T105"));
    Write("readme.txt", "not a folder");
  }

  testing::TempDir dir;
  TWizard wizard;
  std::vector<bool> reported;
};

TEST_F(CatalogueTest, ScanCountsSortsAndCaptionsTheTree) {
  WriteStandardTree();
  TCatalogue catalogue(wizard);
  catalogue.Refresh_Tree();
  EXPECT_EQ(catalogue.Summary(), "4 Templates (3 good and 1 bad) in 4 Folders:");
  EXPECT_EQ(Render(catalogue),
            "alpha (1)\n"
            "  Beta\n"
            "Forms (2)\n"
            "  MDI\n"
            "  SDI\n"
            "Services (1)\n"
            "  Empty\n"
            "  Logger\n");
  const TTemplateInfo& mdi = *NodeOf(catalogue, "Forms/MDI")->Record;
  EXPECT_TRUE(mdi.IsTemplate && mdi.IsValid && !mdi.IsFolder);
  EXPECT_EQ(mdi.FolderPath, PathOf("Forms/MDI/"));
  EXPECT_EQ(mdi.IniFile, PathOf("Forms/MDI/Template.ini"));
  EXPECT_EQ(mdi.Node, NodeOf(catalogue, "Forms/MDI"));
  EXPECT_EQ(catalogue.Find_Node(PathOf("Forms/MDI/Nested")), nullptr);
}

TEST_F(CatalogueTest, SummaryLineForms) {
  struct Case {
    const char* name;
    std::vector<std::string> templates;  // relative Template.ini paths
    const char* summary;
  };
  const Case cases[] = {
      {"empty root", {}, "0 Templates in 0 Folders:"},
      {"one in one", {"A/T/Template.ini"}, "1 Template in 1 Folder:"},
      {"template at top", {"T/Template.ini"}, "1 Template in 0 Folders:"},
  };
  for (const Case& c : cases) {
    fs::remove_all(wizard.TemplatesFolder);
    dir.MakeDir("Templates");
    for (const std::string& path : c.templates) Write(path, TemplateIni("T001"));
    TCatalogue catalogue(wizard);
    catalogue.Refresh_Tree();
    EXPECT_EQ(catalogue.Summary(), c.summary) << c.name;
  }
}

TEST_F(CatalogueTest, SymbolicLinksToFoldersAreNotFollowed) {
  Write("Forms/MDI/Template.ini", TemplateIni("T101"));
  fs::create_directory_symlink(wizard.TemplatesFolder, PathOf("Forms/Loop"));
  fs::create_directory_symlink(PathOf("Forms/MDI"), PathOf("Alias"));
  TCatalogue catalogue(wizard);
  catalogue.Refresh_Tree();
  EXPECT_EQ(catalogue.Summary(), "1 Template in 1 Folder:");
  EXPECT_EQ(Render(catalogue), "Forms (1)\n  MDI\n");
}

TEST_F(CatalogueTest, FoldersDifferingInCaseShareOneNode) {
  Write("Forms/A/Template.ini", TemplateIni("T101"));
  Write("forms/B/Template.ini", TemplateIni("T102"));
  TCatalogue catalogue(wizard);
  catalogue.Refresh_Tree();
  ASSERT_EQ(catalogue.Root().Children.size(), 1u);
  EXPECT_EQ(catalogue.Root().Children[0]->Children.size(), 2u);
  EXPECT_EQ(catalogue.Summary(), "2 Templates in 2 Folders:");
}

TEST_F(CatalogueTest, SelectionShowsPanelAndAdvice) {
  WriteStandardTree();
  const std::string intro =
      "Select a valid template which will be used for the rest of the process.\r\n\r\n"
      "Bad templates (marked with a red icon) can be inspected for the especific error in the "
      "Validation tab below. You won't be able to step forward until a valid template is "
      "selected.\r\n\r\n";
  struct Case {
    const char* node;
    bool valid;
    const char* caption;
    const char* error_name;
    std::string advice;
  };
  const Case cases[] = {
      {"Forms", false, "", "", intro + "Current selection is a folder, not a template."},
      {"Forms/SDI", false, "Error", "errFieldMissingFromTemplateSection",
       intro + "The template selected is invalid!"},
      {"Forms/MDI", true, "Template is ok", "",
       "Ok, you have selected a valid template. Now you can go forward and set your choices for "
       "the creation of the project set.\r\n\r\nIn the next steps you'll be presented with a "
       "number of options; some provided by the wizard itself and others by the template "
       "definitions."},
  };
  TCatalogue catalogue(wizard);
  catalogue.Refresh_Tree();
  for (const Case& c : cases) {
    reported.clear();
    EXPECT_EQ(catalogue.Select(NodeOf(catalogue, c.node)), c.valid) << c.node;
    EXPECT_EQ(reported, std::vector<bool>{c.valid}) << c.node;
    EXPECT_EQ(catalogue.View().Caption, c.caption) << c.node;
    EXPECT_EQ(catalogue.View().ErrorName, c.error_name) << c.node;
    EXPECT_EQ(catalogue.View().Advice, c.advice) << c.node;
    EXPECT_EQ(wizard.SelectedTemplatePath, PathOf(c.node)) << c.node;
  }
  EXPECT_EQ(catalogue.View().Prefix, "T101");
  EXPECT_EQ(catalogue.View().Description, "A template");
}

TEST_F(CatalogueTest, SelectionSurvivesRefreshCollapseAndExpand) {
  WriteStandardTree();
  TCatalogue catalogue(wizard);
  catalogue.Refresh_Tree();
  catalogue.Select(NodeOf(catalogue, "Forms/MDI"));
  wizard.SelectedTemplate->ReadOnly = {false, true};

  catalogue.Do_And_Restore_Selection(TTreeAction::ExpandAll);
  EXPECT_EQ(Render(catalogue, true),
            "alpha (1) +\n  Beta +\n"
            "Forms (2) +\n  MDI +\n  SDI +\n"
            "Services (1) +\n  Empty +\n  Logger +\n");
  catalogue.Do_And_Restore_Selection(TTreeAction::CollapseAll);
  EXPECT_EQ(Render(catalogue, true),
            "alpha (1)\n  Beta\nForms (2) +\n  MDI\n  SDI\nServices (1)\n  Empty\n  Logger\n");
  EXPECT_EQ(catalogue.Selected(), NodeOf(catalogue, "Forms/MDI"));

  reported.clear();
  catalogue.Do_And_Restore_Selection(TTreeAction::Refresh);
  TCatalogueNode* mdi = NodeOf(catalogue, "Forms/MDI");
  EXPECT_EQ(catalogue.Selected(), mdi);
  EXPECT_EQ(wizard.SelectedTemplate.get(), mdi->Record);
  EXPECT_TRUE(IsReadOnly(*wizard.SelectedTemplate, 1));
  EXPECT_TRUE(mdi->Parent->Expanded);
  EXPECT_EQ(reported, std::vector<bool>{true});

  fs::remove_all(PathOf("Forms/MDI"));
  catalogue.Do_And_Restore_Selection(TTreeAction::Refresh);
  EXPECT_EQ(wizard.SelectedTemplate, nullptr);
  EXPECT_EQ(catalogue.Selected(), nullptr);
  EXPECT_FALSE(catalogue.PageValid());
}

TEST_F(CatalogueTest, FolderAfterTemplateKeepsTheAppliedDefaults) {
  WriteStandardTree();
  TCatalogue catalogue(wizard);
  catalogue.Refresh_Tree();
  ASSERT_TRUE(catalogue.Select(NodeOf(catalogue, "Forms/MDI")));
  EXPECT_EQ(wizard.Variables[viTemplatePrefix].Value, "T101");
  wizard.Variables[viProductName].Value = "Edited";

  EXPECT_FALSE(catalogue.Select(NodeOf(catalogue, "Forms")));
  EXPECT_EQ(wizard.Variables[viTemplatePrefix].Value, "T101");
  EXPECT_EQ(wizard.Variables[viProductName].Value, "Edited");

  catalogue.Select(NodeOf(catalogue, "Forms/MDI"));  // the same template: not applied again
  EXPECT_EQ(wizard.Variables[viProductName].Value, "Edited");
  catalogue.Select(NodeOf(catalogue, "Services/Logger"));
  catalogue.Select(NodeOf(catalogue, "Forms/MDI"));
  EXPECT_EQ(wizard.Variables[viProductName].Value, "My Product");
}

TEST_F(CatalogueTest, OpenWithActiveJobAppliesTheJobOnce) {
  WriteStandardTree();
  wizard.ActiveJobFile = dir.Write("Job.001.ini", "[Default Values]\r\nProduct.Name=From Job\r\n").string();
  wizard.SelectedTemplatePath = PathOf("Services/Logger");
  TCatalogue catalogue(wizard);
  EXPECT_TRUE(catalogue.Open());
  EXPECT_TRUE(wizard.JobValuesApplied);
  EXPECT_EQ(catalogue.Selected(), NodeOf(catalogue, "Services/Logger"));
  EXPECT_EQ(wizard.Variables[viProductName].Value, "From Job");
  EXPECT_EQ(wizard.Variables[viTemplatePrefix].Value, "T103");

  wizard.Variables[viProductName].Value = "Edited";
  TCatalogue reopened(wizard);
  EXPECT_TRUE(reopened.Open());
  EXPECT_EQ(wizard.Variables[viProductName].Value, "Edited");
}

}  // namespace
}  // namespace tsaw
