#include "pages/welcome_page.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QTest>
#include <QToolButton>

#include "jobs/config.h"
#include "testing/fake_dialogs.h"
#include "testing/qt_application.h"
#include "testing/temp_dir.h"
#include "testing/wizard_root.h"

namespace tsaw {
namespace {

class WelcomePageTest : public ::testing::Test {
 protected:
  void SetUp() override {
    testing::TestApplication();
    job_file_ = testing::WriteWizardRoot(root_);
    wizard_.WizardFolder = (root_.path() / "TSA/Wizard/").string();
    wizard_.JobsFolder = wizard_.WizardFolder + "Jobs/";
    wizard_.TemplatesFolder = wizard_.WizardFolder + "Templates/";
    Read_Settings(wizard_);
    page_ = std::make_unique<TfrmWelcome>(wizard_, dialogs_, TWelcomeActions{[this] { ++to_templates_; },
                                                                             [this] { ++job_loaded_; }},
                                          nullptr);
    page_->show();
  }

  void Click(const char* button) { QTest::mouseClick(page_->findChild<QToolButton*>(button), Qt::LeftButton); }

  testing::TempDir root_;
  std::string job_file_;
  TWizard wizard_;
  testing::FakeDialogs dialogs_;
  int to_templates_ = 0;
  int job_loaded_ = 0;
  std::unique_ptr<TfrmWelcome> page_;
};

TEST_F(WelcomePageTest, ShowsTheProgramsOwnWording) {
  QStringList shown;
  for (const QLabel* label : page_->findChildren<QLabel*>()) shown << label->text();
  const QString all = shown.join("\n");
  for (const char* text : {"Welcome to TSaW, the Tessera Wizard.", "What do you want to do?",
                           "seleting a template from those available and shown on a treeview.",
                           "which is bound to a especific template. You will still be able to edit the settings.",
                           "Load a Configuration file for the Wizard, containing the first layer of settings.",
                           "in the destination folder, as you'll especify.\n\nNow you may step forward",
                           "You can also chose an existing Job"}) {
    EXPECT_TRUE(all.contains(text)) << text;
  }
}

TEST_F(WelcomePageTest, TemplateCellGoesToTheTemplatesFromButtonOrText) {
  Click("btnStartFromTpl");
  QTest::mouseClick(page_->findChild<QLabel*>("labStartFromTplText"), Qt::LeftButton);
  EXPECT_EQ(to_templates_, 2);
  EXPECT_TRUE(dialogs_.Requests.empty());
}

TEST_F(WelcomePageTest, CancellingTheJobDialogLeavesNoJobAndStaysHere) {
  Click("btnStartFromJob");
  ASSERT_EQ(dialogs_.Requests.size(), 1u);
  const platform::TFileDialogRequest& asked = dialogs_.Requests[0];
  EXPECT_EQ(asked.Title, " Select a Job file to load:");
  EXPECT_EQ(asked.Filter, "Job files (Job*.ini)|Job*.ini|All Configuration files (*.ini)|*.ini|All files (*.*)|*.*");
  EXPECT_EQ(asked.DefaultExt, "ini");
  EXPECT_EQ(asked.FileName, "Job.001.ini");
  EXPECT_EQ(asked.Folder, wizard_.JobsFolder);
  EXPECT_EQ(job_loaded_, 0);
  EXPECT_EQ(wizard_.ActiveJobFile, "");
}

TEST_F(WelcomePageTest, ChosenJobBecomesActiveAndNamesItsTemplate) {
  dialogs_.Answers.push_back(job_file_);
  wizard_.JobValuesApplied = true;
  Click("btnStartFromJob");
  EXPECT_EQ(job_loaded_, 1);
  EXPECT_EQ(wizard_.ActiveJobFile, job_file_);
  EXPECT_EQ(wizard_.SelectedTemplatePath, wizard_.TemplatesFolder + testing::kGoodTemplate);
  EXPECT_FALSE(wizard_.JobValuesApplied);
  EXPECT_TRUE(dialogs_.Messages.empty());
}

TEST_F(WelcomePageTest, JobNamingNoTemplateIsReportedAndTheWizardMovesOnWithoutIt) {
  const std::string stale = root_.Write("TSA/Wizard/Jobs/Job.002.ini", "[Job]\r\nTemplate=Demo/Gone\r\n").string();
  dialogs_.Answers.push_back(stale);
  Click("btnStartFromJob");
  EXPECT_EQ(job_loaded_, 0);
  EXPECT_EQ(to_templates_, 1);
  EXPECT_EQ(wizard_.ActiveJobFile, "");
  ASSERT_EQ(dialogs_.Messages.size(), 1u);
  EXPECT_NE(dialogs_.Messages[0].find("Demo/Gone"), std::string::npos) << dialogs_.Messages[0];
  EXPECT_EQ(dialogs_.MessageKinds, std::vector<platform::TMessageKind>{platform::TMessageKind::Warning});
}

TEST_F(WelcomePageTest, ConfirmedConfigurationDialogChangesNothing) {
  const std::string config_before = wizard_.ConfigFile;
  const size_t variables_before = wizard_.Variables.size();
  dialogs_.Answers.push_back(root_.Write("TSA/Wizard/TSaW.Office.ini", "[TSaW Config]\r\nShellBrowserPlugin=2\r\n").string());
  Click("btnLoadConfig");
  ASSERT_EQ(dialogs_.Requests.size(), 1u);
  const platform::TFileDialogRequest& asked = dialogs_.Requests[0];
  EXPECT_EQ(asked.Title, " Select a Wizard Configuration file:");
  EXPECT_EQ(asked.Filter, "TSaW Configuration files|TSaW.*.ini|All Configuration files|*.ini|All files|*.*");
  EXPECT_EQ(asked.FileName, "TSaW.Default.ini");
  EXPECT_EQ(asked.Folder, wizard_.WizardFolder);
  EXPECT_EQ(wizard_.ConfigFile, config_before);
  EXPECT_EQ(wizard_.ShellBrowserMode, 1);
  EXPECT_EQ(wizard_.Variables.size(), variables_before);
  EXPECT_EQ(to_templates_ + job_loaded_, 0);
}

}  // namespace
}  // namespace tsaw
