#include "jobs/job_loader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>

#include "model/ini_file.h"
#include "templates/template_info.h"
#include "testing/recording_sink.h"
#include "testing/temp_dir.h"

namespace tsaw {
namespace {

class JobLoaderTest : public ::testing::Test {
 protected:
  JobLoaderTest() {
    wizard_.TemplatesFolder = (dir_.path() / "Templates/").string();
    dir_.Write("Templates/Forms/MDI Child/Template.ini", "[Template]\r\nName=MDI\r\n");
    dir_.MakeDir("Templates/Forms/Plain folder");
    dir_.Write("Outside/Template.ini", "[Template]\r\nName=Outside\r\n");
    wizard_.SelectedTemplate = std::make_shared<TTemplateInfo>();
    wizard_.SelectedTemplatePath = "previous";
    wizard_.JobValuesApplied = true;
  }

  std::string JobFile(const std::string& content) { return dir_.Write("Jobs/Job.001.ini", content).string(); }

  testing::TempDir dir_;
  TWizard wizard_;
};

TEST_F(JobLoaderTest, TemplatePathAcceptsEitherSeparator) {
  const std::string expected = wizard_.TemplatesFolder + "Forms/MDI Child";
  for (const char* value : {"Forms/MDI Child", "Forms\\MDI Child", "  Forms\\MDI Child\\  "}) {
    const std::string job = JobFile(std::string("[Job]\r\nTemplate=") + value + "\r\n");
    EXPECT_EQ(Load_Job(wizard_, job), "") << value;
    EXPECT_EQ(wizard_.SelectedTemplatePath, expected) << value;
    EXPECT_EQ(wizard_.ActiveJobFile, job) << value;
    EXPECT_FALSE(wizard_.JobValuesApplied) << value;
    EXPECT_EQ(wizard_.SelectedTemplate, nullptr) << value;
  }
}

TEST_F(JobLoaderTest, BadTemplateLeavesNoJobActiveAndSaysWhy) {
  const std::string templates = wizard_.TemplatesFolder;
  struct Case {
    const char* name;
    std::string content;
    std::string message;  // after the Job file's name
  } cases[] = {
      {"no Job section", "[Default Values]\r\nAuthor=Ann\r\n",
       "\" names no template ([Job] Template is missing or empty)."},
      {"empty value", "[Job]\r\nTemplate=  \r\n", "\" names no template ([Job] Template is missing or empty)."},
      {"climbs out", "[Job]\r\nTemplate=..\\Outside\r\n",
       "\" lies outside the templates folder \"" + templates + "\"."},
      {"climbs out midway", "[Job]\r\nTemplate=Forms/../../Outside\r\n",
       "\" lies outside the templates folder \"" + templates + "\"."},
      {"absolute", "[Job]\r\nTemplate=\\Outside\r\n", "\" lies outside the templates folder \"" + templates + "\"."},
      {"gone", "[Job]\r\nTemplate=Forms/Gone\r\n", "\" was not found in the templates folder \"" + templates + "\"."},
      {"folder, not a template", "[Job]\r\nTemplate=Forms/Plain folder\r\n",
       "\" was not found in the templates folder \"" + templates + "\"."},
  };
  for (const Case& c : cases) {
    const std::string job = JobFile(c.content);
    const std::string message = Load_Job(wizard_, job);
    const std::string value = TIniFile::FromText(c.content).ReadString("Job", "Template");
    const std::string expected = value.empty()
                                     ? "Job not loaded: \"" + job + c.message
                                     : "Job not loaded: the template \"" + value + "\" named in \"" + job + c.message;
    EXPECT_EQ(message, expected) << c.name;
    EXPECT_EQ(wizard_.SelectedTemplatePath, "") << c.name;
    EXPECT_EQ(wizard_.ActiveJobFile, "") << c.name;
  }
}

TEST_F(JobLoaderTest, UnreadableJobFileIsReported) {
  const std::string message = Load_Job(wizard_, dir_.path() / "Jobs" / "missing.ini");
  EXPECT_TRUE(message.starts_with("Job not loaded: ")) << message;
  EXPECT_NE(message.find("missing.ini"), std::string::npos) << message;
  EXPECT_EQ(wizard_.ActiveJobFile, "");
}

TEST_F(JobLoaderTest, LogsTheValueReadAndThePathMade) {
  testing::RecordingDebugLog log;
  Load_Job(wizard_, JobFile("[Job]\r\nTemplate=Forms\\MDI Child\r\n"));
  const std::string expected =
      "TplPartialPath [Forms\\MDI Child]  ActTplName: ]" + wizard_.TemplatesFolder + "Forms/MDI Child]";
  EXPECT_NE(std::find(log.lines().begin(), log.lines().end(), expected), log.lines().end());
}

TEST_F(JobLoaderTest, ClosingForgetsTheJobAndTheLastAppliedTemplate) {
  wizard_.ActiveJobFile = "Jobs/Job.001.ini";
  wizard_.LastAppliedTemplatePath = wizard_.TemplatesFolder + "Forms/MDI Child";
  wizard_.SelectedTemplatePath = wizard_.LastAppliedTemplatePath;
  Close_Job(wizard_);
  EXPECT_EQ(wizard_.ActiveJobFile, "");
  EXPECT_FALSE(wizard_.JobValuesApplied);
  EXPECT_EQ(wizard_.LastAppliedTemplatePath, "");
  EXPECT_EQ(wizard_.SelectedTemplatePath, wizard_.TemplatesFolder + "Forms/MDI Child");
}

}  // namespace
}  // namespace tsaw
