#include "templates/template_paths.h"

#include <gtest/gtest.h>

#include "testing/temp_dir.h"

namespace tsaw {
namespace {

TEST(TemplatePathsTest, RelativeTemplatePathTakesEitherSeparatorAndStaysInside) {
  const struct {
    const char* value;
    const char* relative;
  } cases[] = {
      {"Forms\\MDI Child", "Forms/MDI Child"}, {"Forms/MDI Child/", "Forms/MDI Child"},
      {"Forms\\\\", "Forms"},                  {"/etc", ""},
      {"\\Forms", ""},                         {"Forms/../..", ""},
      {"", ""},                                {"a..b/c", "a..b/c"},
  };
  for (const auto& c : cases) EXPECT_EQ(RelativeTemplatePath(c.value), c.relative) << c.value;
}

TEST(TemplatePathsTest, ListsEveryTemplateBelowTheTemplatesFolderInTreeOrder) {
  testing::TempDir dir;
  TWizard wizard;
  wizard.TemplatesFolder = (dir.path() / "Templates").string() + "/";
  const char* ini = "[Template]\nName=n\n";
  dir.Write("Templates/Forms/SDI/Template.ini", ini);
  dir.Write("Templates/Forms/Deep/MDI Child/Template.ini", ini);
  dir.Write("Templates/Apps/Host/Template.ini", ini);
  dir.MakeDir("Templates/Empty");
  TCatalogue catalogue(wizard);
  catalogue.Refresh_Tree();
  EXPECT_EQ(TemplatePaths(wizard, catalogue),
            (std::vector<std::string>{"Apps/Host", "Forms/Deep/MDI Child", "Forms/SDI"}));
}

TEST(TemplatePathsTest, NearestPathsAreTheClosestFewIgnoringCase) {
  const std::vector<std::string> known = {"Apps/Host", "Forms/MDI Child", "Forms/SDI Child", "Plug-ins/Single"};
  EXPECT_EQ(NearestPaths(known, "forms/mdi chlid", 3),
            (std::vector<std::string>{"Forms/MDI Child", "Forms/SDI Child"}));
  EXPECT_EQ(NearestPaths(known, "Forms/SDI Child", 1), (std::vector<std::string>{"Forms/SDI Child"}));
  EXPECT_EQ(NearestPaths(known, "Something else entirely", 3), std::vector<std::string>{});
  EXPECT_EQ(NearestPaths(known, std::string(5000, 'x'), 3), std::vector<std::string>{});
}

}  // namespace
}  // namespace tsaw
