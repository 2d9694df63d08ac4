// A Job saved, loaded into a fresh session and saved again gives the same bytes.

#include <gtest/gtest.h>

#include <string>

#include "jobs/job_loader.h"
#include "jobs/job_writer.h"
#include "jobs/session.h"
#include "model/targets.h"
#include "templates/catalogue.h"
#include "testing/fake_machine.h"
#include "testing/temp_dir.h"

namespace tsaw {
namespace {

// A model laid out as the loader and the catalogue read Job files, blocks at the end.
std::string FullJobModel() {
  std::string model = "Filled when a Job is saved; everything above the ;;;; line is dropped.\r\n"
                      ";;;; Job file of the Tessera Wizard\r\n[Job]\r\nTemplate=#Job.Template#\r\n\r\n"
                      "[Default Values]\r\n";
  for (const char* key :
       {"Product.Name", "Company.Name", "Copyright", "Author", "Projects.Prefix", "Host.ProjectName"}) {
    model += std::string(key) + "=#Job." + key + "#\r\n";
  }
  model += "#Job.Plugin.ProjectName#\r\n";
  for (const char* key : {"Manager.DeepName", "Manager.Version", "Manager.Author", "Manager.Copyright",
                          "Manager.PluginExtension", "Manager.PluginFolder", "Manager.ServiceFolder"}) {
    model += std::string(key) + "=#Job." + key + "#\r\n";
  }
  model += "#Job.Plugin.Properties#\r\n";
  for (uint16_t target = 1; target <= kTargetCount; ++target) {
    const std::string key(TargetInfo(target).DefaultsKey);
    model += key + "=#Job." + key + "#\r\n";
  }
  for (const char* key : {"Logging.UseTLG", "Logging.LogComments", "Logging.LogInitFinit", "Logging.LogPinCreation",
                          "Logging.LogFunctionResults", "Cosmetic.CommentedHeaders", "Output.BaseFolder"}) {
    model += std::string(key) + "=#Job." + key + "#\r\n";
  }
  model += "{BeginOfBlock Job.Plugin.ProjectName}\r\nPlugin[n].ProjectName=#Job.Plugin.ProjectName#\r\n"
           "{EndOfBlock Job.Plugin.ProjectName}\r\n{BeginOfBlock Job.Plugin.Properties}\r\n";
  for (const char* key : {"DeepName", "Version", "Author", "Copyright", "Description"}) {
    model += std::string("Plugin[n].") + key + "=#Job.Plugin." + key + "#\r\n";
  }
  return model + "{EndOfBlock Job.Plugin.Properties}\r\n";
}

class JobRoundTripTest : public ::testing::Test {
 protected:
  JobRoundTripTest() {
    machine_.Root = dir_.path().string();
    dir_.Write("TSA/Wizard/Jobs/Job Model.txt", FullJobModel());
    dir_.Write("TSA/Wizard/TSaW.Default.ini", "[Default Values]\r\nPlugin.Version=2.0\r\n");
    dir_.Write("TSA/Wizard/Templates/Forms/MDI Child/Template.ini",
               "[Template]\r\nName=MDI child\r\nPrefix=T052\r\nAuthor=J. Q. Sample\r\nPurpose=Child forms\r\n"
               "Desc=Child form plugins\r\nPluginCount=3\r\n[Default Values]\r\nPlugin[1].Version=3.0\r\n"
               "Delphi.2006.Win32=1\r\nChrome.NetFcl=D\r\n");
  }

  // A session whose catalogue has been opened; with a Job loaded this applies the Job's values.
  void Open(TWizard& wizard, TCatalogue& catalogue) {
    ASSERT_TRUE(Start_Session(wizard, clock_, machine_).Ok);
    catalogue.Open();
  }

  std::filesystem::path Job(const char* name) const { return dir_.path() / "TSA/Wizard/Jobs" / name; }

  testing::TempDir dir_;
  testing::FakeMachineFolders machine_;
  testing::FixedClock clock_{0};
};

TEST_F(JobRoundTripTest, SaveLoadSaveGivesIdenticalBytes) {
  TWizard first;
  TCatalogue first_catalogue(first);
  Open(first, first_catalogue);
  ASSERT_TRUE(first_catalogue.Select(first_catalogue.Find_Node(first.TemplatesFolder + "Forms/MDI Child")));
  first.Variables[viProductName].Value = "Acme Tools";
  first.Variables[viCompanyName].Value = "Acme";
  first.Variables[viLoggingLogComments].Value = "False";
  first.Variables[viOutputBaseFolder].Value = "#Path.TsaProjects#/Acme";
  first.Targets[3].Checked = false;
  ASSERT_EQ(Save_Job(first, Job("Job.001.ini"), TOverwrite::Refuse), "");

  TWizard second;
  TCatalogue second_catalogue(second);
  ASSERT_TRUE(Start_Session(second, clock_, machine_).Ok);
  ASSERT_EQ(Load_Job(second, Job("Job.001.ini")), "");
  second_catalogue.Open();
  ASSERT_TRUE(second.JobValuesApplied);
  ASSERT_EQ(Save_Job(second, Job("Job.002.ini"), TOverwrite::Refuse), "");

  const std::string saved = dir_.Read("TSA/Wizard/Jobs/Job.001.ini");
  EXPECT_NE(saved.find("\r\nTemplate=Forms/MDI Child\r\n"), std::string::npos) << saved;
  EXPECT_NE(saved.find("\r\nProduct.Name=Acme Tools\r\n"), std::string::npos) << saved;
  EXPECT_NE(saved.find("\r\nPlugin[3].ProjectName="), std::string::npos) << saved;
  EXPECT_EQ(dir_.Read("TSA/Wizard/Jobs/Job.002.ini"), saved);
}

}  // namespace
}  // namespace tsaw
