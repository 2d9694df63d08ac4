#include "templates/defaults.h"

#include <gtest/gtest.h>

#include <string>

#include "model/targets.h"
#include "model/variables.h"
#include "templates/catalogue.h"
#include "testing/temp_dir.h"

namespace tsaw {
namespace {

constexpr const char* kTemplateSection =
    "[Template]\r\nName=n\r\nPrefix=T200\r\nAuthor=a\r\nPurpose=p\r\nDesc=d\r\nPluginCount=2\r\n";

class DefaultsTest : public ::testing::Test {
 protected:
  DefaultsTest() {
    Init_Variables(wizard);
    wizard.TemplatesFolder = (dir.path() / "Templates").string() + "/";
    wizard.ConfigFile = (dir.path() / "TSaW.Default.ini").string();
  }
  // Writes the template and configuration files, then selects the template as the page does.
  void Select(const std::string& template_defaults, const std::string& config_defaults = "") {
    dir.Write("Templates/Tpl/Template.ini",
              std::string(kTemplateSection) + "[Default Values]\r\n" + template_defaults);
    dir.Write("TSaW.Default.ini", "[Default Values]\r\n" + config_defaults);
    catalogue.Refresh_Tree();
    ASSERT_TRUE(catalogue.Select(catalogue.Find_Node(wizard.TemplatesFolder + "Tpl")));
  }
  const TVariableItem& Var(uint16_t v) const { return wizard.Variables[v]; }
  const TVariableItem& Pin(uint16_t v, int n) const { return *wizard.Variables[v].Pins[n]; }

  testing::TempDir dir;
  TWizard wizard;
  TCatalogue catalogue{wizard};
};

TEST_F(DefaultsTest, InternalDefaultsStandWhenNoSourceSaysOtherwise) {
  wizard.Targets[TargetOf(5, 1)].InstallState = 3;
  Select("");
  struct Case {
    uint16_t var;
    const char* value;
    const char* idf;
  };
  const Case cases[] = {
      {viPluginCount, "2", "_2"},
      {viProjectsPrefix, "MySystem", "MySystem"},
      {viHostProjectName, "#Projects.Prefix#Host", "MySystemHost"},
      {viManagerPluginFolder, "%HostAppDir%", ""},
      {viManagerAuthor, "#Author#", "My_Name"},
      {viPluginIndex, "1", "1"},
      {viLoggingLogPinCreation, "True", "True"},
      {viOutputBaseFolder, "#Path.TsaProjects#", ""},
      {viTemplatePrefix, "T200", "T200"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Var(c.var).Value, c.value) << Var(c.var).Name;
    EXPECT_EQ(Var(c.var).DefaultValue, c.value) << Var(c.var).Name;
    EXPECT_EQ(Var(c.var).IdfValue, c.idf) << Var(c.var).Name;
  }
  EXPECT_EQ(wizard.Variables[viPluginVersion].Pins.size(), 3u);
  EXPECT_EQ(PluginCountOf(wizard), 2);
  EXPECT_EQ(Pin(viPluginProjectName, 2).Value, "#Projects.Prefix#Pin#Plugin.Index#");
  EXPECT_EQ(Pin(viPluginProjectName, 2).IdfValue, "MySystemPin2");
  EXPECT_EQ(Pin(viPluginDeepName, 1).IdfValue, "Plugin_1");
  for (uint16_t t = 1; t <= kTargetCount; ++t) {
    EXPECT_TRUE(wizard.Targets[t].Allowed && wizard.Targets[t].PreSelected) << t;
    EXPECT_EQ(wizard.Targets[t].Required, t == TargetOf(3, 1)) << t;
    EXPECT_EQ(wizard.Targets[t].Checked, t != TargetOf(5, 1)) << t;
  }
  EXPECT_EQ(Var(viTarget).Value, "D5W32");
}

TEST_F(DefaultsTest, LaterSourcesOverrideEarlierOnesPerPluginJobLast) {
  Select("Plugin[1].Version=3.0\r\nProduct.Name=From Template\r\n",
         "Plugin.Version=2.0\r\nProduct.Name=From Config\r\nCompany.Name=Config Co\r\n");
  EXPECT_EQ(Pin(viPluginVersion, 1).DefaultValue, "3.0");
  EXPECT_EQ(Pin(viPluginVersion, 2).DefaultValue, "2.0");
  EXPECT_EQ(Pin(viPluginVersion, 2).IdfValue, "_2_0");
  // A plug-in's value takes the variable's own default, not the text read.
  EXPECT_EQ(Pin(viPluginVersion, 1).Value, "1.0");
  EXPECT_EQ(Var(viProductName).Value, "From Template");
  EXPECT_EQ(Var(viCompanyName).Value, "Config Co");
  // The last plug-in key read (the template's, for plug-in 1) leaves its plug-in current.
  EXPECT_EQ(Var(viPluginIndex).Value, "1");
  EXPECT_EQ(Var(viPluginIndex).IdfValue, "");
  EXPECT_EQ(wizard.PluginIndex, 1);

  Apply_Job_Default_Values(wizard);  // no Job active: nothing
  EXPECT_EQ(Var(viProductName).Value, "From Template");
  wizard.ActiveJobFile = dir.Write("Job.ini", "[Default Values]\r\nProduct.Name=From Job\r\n"
                                              "Plugin[2].Version=4.0\r\n").string();
  Apply_Job_Default_Values(wizard);
  EXPECT_EQ(Var(viProductName).Value, "From Job");
  EXPECT_EQ(Pin(viPluginVersion, 2).DefaultValue, "4.0");
}

TEST_F(DefaultsTest, TargetValuesSetTheFlags) {
  const uint16_t d5 = TargetOf(1, 1), d6 = TargetOf(2, 1), d7 = TargetOf(3, 1), d2005 = TargetOf(5, 1),
                 d2006 = TargetOf(6, 1), d2007 = TargetOf(7, 1), chrome = TargetOf(9, 3);
  wizard.Targets[d2007].InstallState = 2;
  Select("Delphi.7.Win32=D\r\nDelphi.5.Win32=R\r\nDelphi.6.Win32=1\r\nDelphi.2005.Win32=x\r\n"
         "Delphi.2006.Win32=r\r\nDelphi.2007.Win32=1\r\n");
  struct Case {
    const char* name;
    uint16_t target;
    bool allowed, required, preselected, checked;
  };
  const Case cases[] = {
      {"D disallows the internal required target", d7, false, false, false, false},
      {"R requires", d5, true, true, true, true},
      {"1 pre-selects", d6, true, false, true, true},
      {"other text allows only", d2005, true, false, false, false},
      {"letters compare exactly", d2006, true, false, false, false},
      {"not installed stays unchecked", d2007, true, false, true, false},
      {"absent keeps the internal flags", chrome, true, false, true, true},
  };
  for (const Case& c : cases) {
    const TTargetChoice& t = wizard.Targets[c.target];
    EXPECT_EQ(t.Allowed, c.allowed) << c.name;
    EXPECT_EQ(t.Required, c.required) << c.name;
    EXPECT_EQ(t.PreSelected, c.preselected) << c.name;
    EXPECT_EQ(t.Checked, c.checked) << c.name;
  }
  EXPECT_EQ(Var(viTarget).Value, "D5W32");
}

TEST_F(DefaultsTest, BooleansAndTheLoggingMasterSwitch) {
  Select("Logging.UseTLG=no\r\nLogging.LogComments=yes\r\nCosmetic.CommentedHeaders=True \xC2\xA6 $ReadOnly\r\n",
         "Logging.UseTLG=Y\r\n");
  for (uint16_t v = viLoggingUseTLG; v <= viCosmeticCommentedHeaders; ++v) {
    EXPECT_EQ(Var(v).Value, "False") << Var(v).Name;
    EXPECT_EQ(Var(v).IdfValue, "False") << Var(v).Name;
  }
}

TEST_F(DefaultsTest, BrokenBarOptionsSetOrClearReadOnlyMarks) {
  Select("Company.Name=Acme \xC2\xA6 $ReadOnly\r\nAuthor=Me \xC2\xA6 $readonly\r\n"
         "Product.Name=Plain\r\nPlugin[2].Description=One\xC2\xB6Two \xC2\xA6 x $ReadOnly\r\n",
         "Author=Config \xC2\xA6 $ReadOnly\r\nProduct.Name=P \xC2\xA6 $ReadOnly\r\n");
  const TTemplateInfo& info = *wizard.SelectedTemplate;
  EXPECT_EQ(Var(viCompanyName).Value, "Acme");
  EXPECT_EQ(Var(viCompanyName).IdfValue, "Acme");
  EXPECT_TRUE(IsReadOnly(info, viCompanyName));
  EXPECT_EQ(Var(viAuthor).Value, "Me");
  EXPECT_FALSE(IsReadOnly(info, viAuthor));
  EXPECT_EQ(Var(viProductName).Value, "Plain");
  EXPECT_TRUE(IsReadOnly(info, viProductName));  // no bar: the mark stays as it was
  EXPECT_EQ(Pin(viPluginDescription, 2).DefaultValue, "One\r\nTwo");
  EXPECT_EQ(Pin(viPluginDescription, 2).IdfValue, "");
  EXPECT_TRUE(IsReadOnly(info, viPluginDescription));
}

TEST_F(DefaultsTest, NothingHappensWithoutAValidTemplate) {
  dir.Write("Templates/Bad/Template.ini", "[Template]\r\nName=x\r\n[Default Values]\r\nAuthor=Bad\r\n");
  catalogue.Refresh_Tree();
  EXPECT_FALSE(catalogue.Select(catalogue.Find_Node(wizard.TemplatesFolder + "Bad")));
  EXPECT_EQ(Var(viAuthor).Value, "");
  EXPECT_EQ(Var(viProjectsPrefix).Value, "");
  EXPECT_FALSE(wizard.Targets[1].Allowed);
  EXPECT_NE(Apply_Value_Overrides(wizard, {{"Author", "x"}}), "");
}

TEST_F(DefaultsTest, OverridesApplyAsOneMoreLayer) {
  Select("Product.Name=From Template\r\n");
  EXPECT_EQ(Apply_Value_Overrides(wizard, {{"product.name", "First"},
                                           {"Product.Name", "Second"},
                                           {"Delphi.7.Win32", "D"},
                                           {"Plugin[2].Version", "5.0"},
                                           {"Plugin.Author", "Everyone"},
                                           {"Logging.UseTLG", "no"}}),
            "");
  EXPECT_EQ(Var(viProductName).Value, "Second");
  EXPECT_FALSE(wizard.Targets[TargetOf(3, 1)].Allowed);
  EXPECT_EQ(Pin(viPluginVersion, 2).Value, "5.0");
  EXPECT_EQ(Pin(viPluginVersion, 1).Value, "1.0");
  EXPECT_EQ(Pin(viPluginAuthor, 1).Value, "Everyone");
  EXPECT_EQ(Var(viLoggingLogComments).Value, "False");
}

// Each override is a layer: "UseTLG=no" below an override clears it, above one it does not.
TEST_F(DefaultsTest, EachOverrideIsALayerOfItsOwnInTheOrderGiven) {
  Select("Logging.UseTLG=no\r\n");
  ASSERT_EQ(Var(viLoggingLogComments).Value, "False");
  EXPECT_EQ(Apply_Value_Overrides(wizard, {{"Logging.LogComments", "yes"}, {"Logging.UseTLG", "yes"}}), "");
  EXPECT_EQ(Var(viLoggingUseTLG).Value, "True");
  EXPECT_EQ(Var(viLoggingLogComments).Value, "False");

  EXPECT_EQ(Apply_Value_Overrides(wizard, {{"Logging.UseTLG", "yes"}, {"Logging.LogComments", "yes"}}), "");
  EXPECT_EQ(Var(viLoggingUseTLG).Value, "True");
  EXPECT_EQ(Var(viLoggingLogComments).Value, "True");
}

TEST_F(DefaultsTest, NamesTheKeysAFileHoldsThatReadingIgnores) {
  const auto job = dir.Write("Job.ini", "[Job]\r\nTemplate=Tpl\r\n[Default Values]\r\nProduct.Name=P\r\n"
                                        "Product.Nmae=typo\r\nPlugin[2].Version=2\r\nPlugin[3].Version=3\r\n"
                                        "Plugin.Author=all\r\n");
  const TIniFile ini = TIniFile::Load(job);
  const std::string file = job.string();
  EXPECT_EQ(Ignored_Default_Keys(ini, 2, true),
            (std::vector<std::string>{
                file + ":5: Unknown key \"Product.Nmae\": not a \"Default Values\" key; the key is ignored",
                file + ":7: Plug-in number in \"Plugin[3].Version\" is out of range: the template has 2 plug-ins; "
                       "the key is ignored",
                file + ":8: \"Plugin.Author\" is read only from configuration files; write \"Plugin[n].Author\" "
                       "here; the key is ignored"}));
  EXPECT_EQ(Ignored_Default_Keys(ini, 3, false).at(1),
            file + ":6: \"Plugin[2].Version\" is read only from Job and template files; write "
                   "\"Plugin.Version\" here; the key is ignored");
}

TEST_F(DefaultsTest, OverridesRejectBadKeysAndApplyNothing) {
  Select("");
  const struct {
    const char* key;
    const char* value;
    const char* error;
  } cases[] = {
      {"Product.Nmae", "x", "Unknown key \"Product.Nmae\": not a \"Default Values\" key"},
      {"Plugin.Index", "2", "Unknown key \"Plugin.Index\": not a \"Default Values\" key"},
      {"Plugin[3].Version", "x",
       "Plug-in number in \"Plugin[3].Version\" is out of range: the template has 2 plug-ins"},
      {"Plugin[01].Version", "x",
       "Plug-in number in \"Plugin[01].Version\" is out of range: the template has 2 plug-ins"},
      {"Author", "a\nb", "The value of \"Author\" holds a line break; write line breaks as \"\xC2\xB6\""},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Apply_Value_Overrides(wizard, {{"Product.Name", "Applied?"}, {c.key, c.value}}), c.error)
        << c.key;
    EXPECT_EQ(Var(viProductName).Value, "My Product") << c.key;
  }
}

}  // namespace
}  // namespace tsaw
