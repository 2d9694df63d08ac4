#include "jobs/job_writer.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "model/variables.h"
#include "templates/template_info.h"
#include "testing/temp_dir.h"

namespace tsaw {
namespace {

constexpr uint16_t kPluginVars[] = {viPluginProjectName, viPluginVersion, viPluginAuthor,
                                    viPluginDeepName, viPluginCopyright, viPluginDescription};

// A wizard with a selected template of `plugins` plug-ins whose values name their plug-in.
TWizard WizardWithPlugins(uint16_t plugins) {
  TWizard wizard;
  Init_Variables(wizard);
  wizard.TemplatesFolder = "root/TSA/Wizard/Templates/";
  wizard.SelectedTemplatePath = "root/TSA/Wizard/Templates/Forms/MDI Child";
  auto info = std::make_shared<TTemplateInfo>();
  info->PluginCount = plugins;
  wizard.SelectedTemplate = info;
  for (uint16_t var : kPluginVars) {
    ResizePinSubArray(wizard.Variables[var], plugins);
    for (uint16_t n = 1; n <= plugins; ++n) {
      wizard.Variables[var].Pins[n]->Value = wizard.Variables[var].Name + " of " + std::to_string(n);
    }
  }
  return wizard;
}

// Joins lines, each ending in CR LF, so expected files read as lists.
std::string Lines(std::initializer_list<const char*> lines) {
  std::string text;
  for (const char* line : lines) text.append(line).append("\r\n");
  return text;
}

TEST(JobWriterTest, FillsBothBlocksPerPluginAndEveryKindOfPlaceholder) {
  TWizard wizard = WizardWithPlugins(3);
  wizard.Variables[viProductName].Value = "Acme Tools";
  wizard.Variables[viManagerServiceFolder].Value = "%HostAppDir%";
  wizard.Variables[viOutputBaseFolder].Value = "#Path.TsaProjects#";
  wizard.Variables[viLoggingUseTLG].Value = "True";
  wizard.Variables[viLoggingLogComments].Value = "False";
  wizard.Variables[viPluginDescription].Pins[2]->Value = "First line\r\nSecond line";
  wizard.Targets[18].Checked = true;
  const std::string model = Lines({
      "This preamble is dropped",
      "  ;;;; Job file, made by the wizard",
      "[Job]",
      "Template=#Job.Template#",
      "Ods=#Job.ODS#",
      "[Default Values]",
      "Product.Name=#Job.Product.Name#",
      "#Job.Plugin.ProjectName#",
      "{BeginOfBlock Job.Plugin.ProjectName}",
      "Plugin[n].ProjectName=#Job.Plugin.ProjectName#",
      "{EndOfBlock Job.Plugin.ProjectName}",
      "Manager.ServiceFolder=#Job.Manager.ServiceFolder#",
      "{BeginOfBlock Job.Plugin.Properties}",
      "Plugin[n].Version=#Job.Plugin.Version#",
      "Plugin[n].Description=#Job.Plugin.Description#",
      "",
      "{EndOfBlock Job.Plugin.Properties}",
      "#Job.Plugin.Properties#",
      "Chrome.NetFcl=#Job.Chrome.NetFcl#",
      "Delphi.7.Win32=#Job.Delphi.7.Win32#",
      "Logging.UseTLG=#Job.Logging.UseTLG#",
      "Logging.LogComments=#Job.Logging.LogComments#",
      "Output.BaseFolder=#Job.Output.BaseFolder#",
  });
  EXPECT_EQ(Fill_Job_Model(wizard, model),
            Lines({
                "  ;;;; Job file, made by the wizard",
                "[Job]",
                "Template=Forms/MDI Child",
                "Ods=001",
                "[Default Values]",
                "Product.Name=Acme Tools",
                "Plugin[1].ProjectName=Plugin.ProjectName of 1",
                "Plugin[2].ProjectName=Plugin.ProjectName of 2",
                "Plugin[3].ProjectName=Plugin.ProjectName of 3",
                "Manager.ServiceFolder=%HostAppDir%",
                "Plugin[1].Version=Plugin.Version of 1",
                "Plugin[1].Description=Plugin.Description of 1",
                "Plugin[2].Version=Plugin.Version of 2",
                "Plugin[2].Description=First line \xC2\xB6 Second line",
                "Plugin[3].Version=Plugin.Version of 3",
                "Plugin[3].Description=Plugin.Description of 3",
                "",
                "Chrome.NetFcl=1",
                "Delphi.7.Win32=0",
                "Logging.UseTLG=1",
                "Logging.LogComments=0",
                "Output.BaseFolder=#Path.TsaProjects#",
            }));
}

TEST(JobWriterTest, ReplacesOnlyTheFirstOccurrenceOfEachPlaceholder) {
  TWizard wizard = WizardWithPlugins(2);
  wizard.Variables[viAuthor].Value = "Ann";
  const std::string model = Lines({
      ";;;;",
      "Author=#Job.Author# and #Job.Author#",
      "{BeginOfBlock Job.Plugin.Properties}",
      "Plugin[n].Author=#Job.Plugin.Author# #Job.Plugin.Author# [n]",
      "{EndOfBlock Job.Plugin.Properties}",
      "#Job.Plugin.Properties#",
      "again #Job.Plugin.Properties#",
  });
  EXPECT_EQ(Fill_Job_Model(wizard, model),
            Lines({
                ";;;;",
                "Author=Ann and #Job.Author#",
                "Plugin[1].Author=Plugin.Author of 1 #Job.Plugin.Author# [1]",
                "Plugin[2].Author=Plugin.Author of 2 #Job.Plugin.Author# [2]",
                "again #Job.Plugin.Properties#",
            }));
}

TEST(JobWriterTest, ModelShapesThatLeaveLittleOrNothing) {
  const TWizard wizard = WizardWithPlugins(2);
  struct Case {
    const char* name;
    std::string model;
    std::string expected;
  } cases[] = {
      {"no ;;;; line", Lines({"[Job]", "Template=#Job.Template#"}), ""},
      {"empty model", "", ""},
      {"block without begin marker",
       Lines({";;;;", "#Job.Plugin.ProjectName#", "Plugin[n]=x", "{EndOfBlock Job.Plugin.ProjectName}"}),
       Lines({";;;;", "", "Plugin[n]=x", "{EndOfBlock Job.Plugin.ProjectName}"})},
      {"begin marker on the last line is not a block",
       Lines({";;;;", "#Job.Plugin.ProjectName#", "{BeginOfBlock Job.Plugin.ProjectName}"}),
       Lines({";;;;", "", "{BeginOfBlock Job.Plugin.ProjectName}"})},
      {"block without end marker runs to the end",
       Lines({";;;;", "#Job.Plugin.ProjectName#", "{BeginOfBlock Job.Plugin.ProjectName}", "P[n]"}),
       Lines({";;;;", "P[1]\r\nP[2]"})},
      {"UTF-8 byte-order mark before ;;;;", "\xEF\xBB\xBF;;;;\r\nOds=#Job.ODS#", Lines({";;;;", "Ods=001"})},
  };
  for (const Case& c : cases) EXPECT_EQ(Fill_Job_Model(wizard, c.model), c.expected) << c.name;
}

TEST(JobWriterTest, SaveWritesTheFilledModelAndNeverOverwritesUnasked) {
  testing::TempDir dir;
  TWizard wizard = WizardWithPlugins(1);
  wizard.JobsFolder = (dir.path() / "Jobs/").string();
  wizard.Variables[viProductName].Value = "Acme";
  dir.Write("Jobs/Job Model.txt", "preamble\r\n;;;;\r\nProduct.Name=#Job.Product.Name#\r\n");
  const auto job = dir.path() / "Jobs" / "Job.001.ini";

  EXPECT_EQ(Save_Job(wizard, job, TOverwrite::Refuse), "");
  EXPECT_EQ(dir.Read("Jobs/Job.001.ini"), ";;;;\r\nProduct.Name=Acme\r\n");

  wizard.Variables[viProductName].Value = "Other";
  EXPECT_EQ(Save_Job(wizard, job, TOverwrite::Refuse),
            "Job not saved: \"" + job.string() + "\" already exists and was left as it is.");
  EXPECT_EQ(dir.Read("Jobs/Job.001.ini"), ";;;;\r\nProduct.Name=Acme\r\n");

  EXPECT_EQ(Save_Job(wizard, job, TOverwrite::Confirmed), "");
  EXPECT_EQ(dir.Read("Jobs/Job.001.ini"), ";;;;\r\nProduct.Name=Other\r\n");

  const auto elsewhere = dir.path() / "missing" / "Job.ini";
  EXPECT_EQ(Save_Job(wizard, elsewhere, TOverwrite::Confirmed),
            "Job not saved: the folder of \"" + elsewhere.string() + "\" does not exist.");
}

TEST(JobWriterTest, MissingModelIsReportedWithItsFullName) {
  testing::TempDir dir;
  TWizard wizard = WizardWithPlugins(1);
  wizard.JobsFolder = (dir.path() / "Jobs/").string();
  dir.MakeDir("Jobs");
  EXPECT_EQ(Save_Job(wizard, dir.path() / "Job.ini", TOverwrite::Refuse),
            "Job Model could not be loaded:\r\n\r\n" + (dir.path() / "Jobs" / "Job Model.txt").string());
  EXPECT_FALSE(std::filesystem::exists(dir.path() / "Job.ini"));
}

}  // namespace
}  // namespace tsaw
