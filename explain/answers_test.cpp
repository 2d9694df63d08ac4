// Which source set each answer, with every source present: configuration, template, Job, --set.

#include "explain/answers.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

#include "model/variables.h"
#include "templates/catalogue.h"
#include "testing/temp_dir.h"

namespace tsaw::explain {

// Shows a failing answer readably.
void PrintTo(const TAnswer& a, std::ostream* os) {
  *os << a.Name << "=" << a.Value << " | " << a.Expanded << " | " << a.Identifier << " | " << LayerName(a.Layer)
      << (a.ReadOnly ? " read-only" : "") << (a.Settable ? " settable" : "");
}

namespace {

class AnswersTest : public ::testing::Test {
 protected:
  AnswersTest() {
    Init_Variables(wizard);
    wizard.TemplatesFolder = (dir.path() / "Templates").string() + "/";
    wizard.ConfigFile = dir.Write("TSaW.Default.ini",
                                  "[Custom Variables]\r\nSite=https://c\r\n[Default Values]\r\nCompany.Name=Config Co\r\n"
                                  "Author=Config Author\r\nPlugin.Version=0.5\r\n")
                            .string();
    dir.Write("Templates/Tpl/Template.ini",
              "[Template]\r\nName=n\r\nPrefix=T200\r\nAuthor=a\r\nPurpose=p\r\nDesc=d\r\nPluginCount=2\r\n"
              "[Custom Variables]\r\nGreeting=Hello\r\n[Default Values]\r\nCompany.Name=Tpl Co \xC2\xA6 $ReadOnly\r\n"
              "Plugin[2].Version=2.0\r\nDelphi.2007.Win32=R\r\nLogging.UseTLG=no\r\n");
    catalogue.Refresh_Tree();
    EXPECT_TRUE(catalogue.Select(catalogue.Find_Node(wizard.TemplatesFolder + "Tpl")));
    wizard.ActiveJobFile = dir.Write("Job.001.ini", "[Default Values]\r\nAuthor=Job Author\r\n").string();
  }
  std::map<std::string, TAnswer> Answers() {
    std::map<std::string, TAnswer> by_name;
    for (const TAnswer& answer : ListAnswers(wizard, layers)) by_name[answer.Name] = answer;
    return by_name;
  }
  testing::TempDir dir;
  TWizard wizard;
  TCatalogue catalogue{wizard};
  TAnswerLayers layers;
};

TEST_F(AnswersTest, EachAnswerNamesTheLastSourceThatSetIt) {
  ASSERT_EQ(layers.Replay(wizard, {{"Product.Name", "Set #Company.Name#"}}), "");
  const uint16_t current_plugin = wizard.PluginIndex;
  auto answers = Answers();
  const TAnswer expected[] = {
      {"Product.Name", "Set #Company.Name#", "Set Tpl Co", "Set_Tpl_Co", TLayer::Set, false, true},
      {"Company.Name", "Tpl Co", "Tpl Co", "Tpl_Co", TLayer::Template, true, true},
      {"Author", "Job Author", "Job Author", "Job_Author", TLayer::Job, false, true},
      // A file gives a plug-in item its default, but the value a run uses stays the variable's own.
      {"Plugin[1].Version", "1.0", "1.0", "_1_0", TLayer::Internal, false, true},
      {"Plugin[2].Version", "1.0", "1.0", "_1_0", TLayer::Internal, false, true},
      {"Plugin[2].ProjectName", "#Projects.Prefix#Pin#Plugin.Index#", "MySystemPin2", "MySystemPin2",
       TLayer::Internal, false, true},
      {"Logging.LogComments", "False", "False", "False", TLayer::Template, false, true},
      {"Custom.Site", "https://c", "https://c", answers["Custom.Site"].Identifier, TLayer::Configuration, false, false},
      {"Custom.Greeting", "Hello", "Hello", answers["Custom.Greeting"].Identifier, TLayer::Template, false, false},
      {"Template.Prefix", "T200", "T200", "T200", TLayer::Internal, false, false},
      {"Delphi.7.Win32", "required", "required", "", TLayer::Internal, false, true, 3},
      {"Delphi.2007.Win32", "required", "required", "", TLayer::Template, false, true, 12},
  };
  for (const TAnswer& answer : expected) {
    EXPECT_EQ(answers[answer.Name], answer) << answer.Name;
  }
  EXPECT_EQ(wizard.PluginIndex, current_plugin) << "the current plug-in is put back";
  EXPECT_EQ(layers.Of(viPluginVersion, 1), TLayer::Configuration);
  EXPECT_EQ(layers.Of(viPluginVersion, 2), TLayer::Template);
}

TEST_F(AnswersTest, ABadSetIsToldAndTheFilesStillCount) {
  EXPECT_EQ(layers.Replay(wizard, {{"Product.Nmae", "x"}}), "Unknown key \"Product.Nmae\": not a \"Default Values\" key");
  EXPECT_EQ(layers.Of(viCompanyName), TLayer::Template);
  EXPECT_EQ(layers.Of(viProductName), TLayer::Internal);
}

}  // namespace
}  // namespace tsaw::explain
