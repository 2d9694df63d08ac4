// The Creation Process page on a copy of the sample data: pausing, aborting in either pass, and
// the buttons offered after a finished run.

#include "pages/creation_page_widget.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTest>
#include <QToolButton>

#include <cstdlib>
#include <filesystem>

#include "generations/store.h"
#include "jobs/session.h"
#include "templates/catalogue.h"
#include "testing/fake_dialogs.h"
#include "testing/fake_machine.h"
#include "testing/pump_probe.h"
#include "testing/qt_application.h"
#include "testing/recording_trash.h"
#include "testing/temp_dir.h"

namespace tsaw {
namespace {
namespace fs = std::filesystem;

constexpr const char* kAbortAdvice =
    "The process has been aborted. You may start it again by clicking the \"ray\" button. \n"
    "The report, however, is available containing all tasks performed before the process has been aborted.";

size_t FilesBelow(const fs::path& folder) {
  if (!fs::exists(folder)) return 0;
  size_t files = 0;
  for (const auto& entry : fs::recursive_directory_iterator(folder)) files += entry.is_regular_file() ? 1 : 0;
  return files;
}

// The page on the sample template "Host with Three Plugins", its Project Set under the root's
// "TSA/User Projects".
class CreationPageTest : public ::testing::Test {
 protected:
  void SetUp() override {
    testing::TestApplication();
    setenv("XDG_STATE_HOME", (root_.path() / "state").c_str(), 1);  // the store of recorded runs
    fs::copy(TSAW_SAMPLE_DIR, root_.path(), fs::copy_options::recursive);
    machine_.Root = root_.path().string();
    Start_Session(wizard_, clock_, machine_);
    TCatalogue catalogue(wizard_);
    catalogue.Refresh_Tree();
    ASSERT_TRUE(catalogue.Select(catalogue.Find_Node(wizard_.TemplatesFolder + kTemplate)));
    dci_ = creation::MakeReproducibleDciGenerator("0");
    page_ = std::make_unique<TfrmCreation>(
        TCreationPageServices{wizard_, dialogs_, {}, [this](bool visible) { navigation_.push_back(visible); },
                              [this](const std::string& file) {
                                opened_.push_back(file);
                                return viewer_works_;
                              },
                              &trash_, dci_.get(), nullptr},
        nullptr);
    page_->resize(800, 560);
    page_->show();
  }

  template <typename T = QWidget>
  T* Find(const char* name) const {
    T* child = page_->findChild<T*>(name);
    if (!child) ADD_FAILURE() << "no control " << name;
    return child;
  }
  QString Text(const char* label) const { return Find<QLabel>(label)->text(); }
  void Click(const char* name) { QTest::mouseClick(Find(name), Qt::LeftButton); }
  fs::path ProjectSet() const { return root_.path() / "TSA/User Projects/Plug-in Host Demo"; }
  std::string Report() const { return root_.Read("TSA/Wizard/Report.txt"); }

  // Starts a run that is paused, at the first pump at which `when` holds, and answered `answer`.
  void RunPausedWhen(std::function<bool()> when, platform::TAnswer answer) {
    dialogs_.QuestionAnswers = {answer};
    testing::PumpProbe probe(std::move(when), [this] { Click("btnStop"); });
    Click("btnStart");
    EXPECT_TRUE(probe.Fired());
  }

  static constexpr const char* kTemplate = "Applications/Host with Three Plugins";
  testing::TempDir root_;
  TWizard wizard_;
  testing::FixedClock clock_{0};
  testing::FakeMachineFolders machine_;
  testing::FakeDialogs dialogs_;
  testing::RecordingTrash trash_;
  std::unique_ptr<creation::TDciGenerator> dci_;
  std::vector<bool> navigation_;
  std::vector<std::string> opened_;
  bool viewer_works_ = true;
  std::unique_ptr<TfrmCreation> page_;
};

TEST_F(CreationPageTest, APausedRunResumesOnOkAndFinishes) {
  EXPECT_EQ(Text("labTask"), "idle.");
  EXPECT_EQ(Text("labFilesScanned"), "0.000");
  QString paused_message;
  dialogs_.OnQuestion = [&] { paused_message = Text("labMsg"); };
  RunPausedWhen([this] { return Find("btnStop")->isVisible(); }, platform::TAnswer::Ok);

  EXPECT_EQ(dialogs_.Questions, std::vector<std::string>{" Process paused. Resume?"});
  EXPECT_EQ(paused_message, "Process paused.");
  EXPECT_EQ(Text("labMsg"), "Process finished!");
  EXPECT_EQ(Text("labTask"), "idle.");
  EXPECT_TRUE(Text("labAdvice").startsWith("The wizard has successfully created your Project Set."));
  EXPECT_EQ(navigation_, (std::vector<bool>{false, true}));
  EXPECT_EQ(Text("labFilesProcessed").toStdString(), std::to_string(FilesBelow(ProjectSet())));
  EXPECT_EQ(Text("labFilesFailed"), "0");
  for (const char* shown : {"btnStart", "labStart", "btnOpen", "btnReport", "btnSaveJob", "labSaveJob"}) {
    EXPECT_TRUE(Find(shown)->isVisible()) << shown;
  }
  EXPECT_FALSE(Find("btnStop")->isVisible());
}

TEST_F(CreationPageTest, AFinishedRunIsRecordedAndAnAbortedOneIsNot) {
  auto generations = [this] {
    std::string error;
    auto store = generations::TGenerationStore::Open(root_.path() / "state/tsaw", ProjectSet(), false, error);
    return store ? store->Generations().size() : 0u;
  };
  RunPausedWhen([this] { return Find("btnStop")->isVisible(); }, platform::TAnswer::Abort);
  EXPECT_EQ(generations(), 0u);
  QTest::mouseClick(Find("btnStart"), Qt::LeftButton);
  EXPECT_EQ(Text("labMsg"), "Process finished!");
  EXPECT_EQ(generations(), 1u);
}

TEST_F(CreationPageTest, ThePauseButtonTakesTheStartButtonsPlaceAndTheFocus) {
  page_->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(page_.get()));
  Find("btnStart")->setFocus();
  const QRect start = Find("btnStart")->geometry();
  const QRect actions = Find("panActions")->geometry();
  QRect pause;
  QWidget* focused = nullptr;
  QRect actions_running;
  testing::PumpProbe probe([this] { return Find("btnStop")->isVisible(); },
                           [&] {
                             pause = Find("btnStop")->geometry();
                             focused = QApplication::focusWidget();
                             actions_running = Find("panActions")->geometry();
                           });
  Click("btnStart");
  ASSERT_TRUE(probe.Fired());
  EXPECT_EQ(pause, start);
  EXPECT_EQ(focused, Find("btnStop"));
  EXPECT_EQ(actions_running, actions);
  EXPECT_EQ(Find("panActions")->geometry(), actions) << "the results' buttons take no new room";
  EXPECT_EQ(QApplication::focusWidget(), Find("btnStart"));
}

TEST_F(CreationPageTest, OffersUpdateOnceARunIsRecordedAndListsItsConflictsWithOpenButtons) {
  EXPECT_FALSE(Find("radReplace")->isVisible());
  EXPECT_FALSE(Find("radUpdate")->isVisible());
  Click("btnStart");
  ASSERT_EQ(Text("labMsg"), "Process finished!");
  EXPECT_TRUE(Find("radReplace")->isVisible());
  EXPECT_TRUE(Find<QRadioButton>("radUpdate")->isVisible());
  EXPECT_TRUE(Find<QRadioButton>("radUpdate")->isChecked());
  EXPECT_FALSE(Find("labUpdateWhy")->isVisible());

  const std::string unit = "Delphi 2007/Win32/Host/MainForm.pas";
  const fs::path mine = ProjectSet() / unit;
  ASSERT_TRUE(fs::exists(mine));
  std::string text = root_.Read(mine.lexically_relative(root_.path()).string());
  root_.Write(mine.lexically_relative(root_.path()).string(), "// my edit\r\n" + text);
  const std::string source = "TSA/Wizard/Templates/" + std::string(kTemplate) + "/Delphi 2007/Win32/Host/MainForm.pas";
  root_.Write(source, "// the template's edit\n" + root_.Read(source));
  Click("btnStart");
  EXPECT_EQ(Text("labMsg"), "Process finished!");
  EXPECT_TRUE(dialogs_.Messages.empty());
  ASSERT_TRUE(Find("panConflicts")->isVisible());
  EXPECT_EQ(Text("labConflict1").toStdString(), unit);
  EXPECT_EQ(root_.Read(mine.lexically_relative(root_.path()).string()).substr(0, 26), "<<<<<<< ours (your edit)\r\n");
  Click("btnOpenConflict1");
  EXPECT_EQ(opened_, std::vector<std::string>{mine.string()});

  fs::remove_all(root_.path() / "state");
  Click("btnStart");
  ASSERT_EQ(dialogs_.Messages.size(), 1u);
  EXPECT_TRUE(dialogs_.Messages[0].starts_with("The update has stopped: no generation of '" + ProjectSet().string() + "' is recorded"));
  EXPECT_TRUE(Find("radReplace")->isVisible());
  EXPECT_FALSE(Find("radUpdate")->isVisible());
  EXPECT_TRUE(Find("labUpdateWhy")->isVisible());
  EXPECT_TRUE(Text("labUpdateWhy").startsWith("Only Replace is possible: no generation of this Project Set folder"));
}

TEST_F(CreationPageTest, AbortDuringTheCountingPassWritesNothing) {
  RunPausedWhen([this] { return Text("labTask") == "counting files and folders..."; }, platform::TAnswer::Abort);

  EXPECT_EQ(Text("labMsg"), "Process aborted!");
  EXPECT_EQ(Text("labTask"), "idle.");
  EXPECT_EQ(Text("labAdvice"), kAbortAdvice);
  EXPECT_FALSE(fs::exists(ProjectSet()));
  EXPECT_NE(Report().find("\r\nProcess aborted!\r\n"), std::string::npos);
  EXPECT_NE(Report().find("REPORT STATISTICS"), std::string::npos);
  EXPECT_TRUE(Find("btnStart")->isVisible());
  for (const char* hidden : {"btnStop", "btnOpen", "btnReport", "btnSaveJob"}) {
    EXPECT_FALSE(Find(hidden)->isVisible()) << hidden;
  }
  EXPECT_EQ(navigation_, (std::vector<bool>{false, true}));
}

TEST_F(CreationPageTest, AbortDuringTheProcessingPassLeavesTheRestUnwritten) {
  RunPausedWhen([this] { return Text("labFilesProcessed") == "3"; }, platform::TAnswer::Abort);

  EXPECT_EQ(Text("labMsg"), "Process aborted!");
  EXPECT_EQ(Text("labAdvice"), kAbortAdvice);
  EXPECT_EQ(FilesBelow(ProjectSet()), 3u);
  EXPECT_FALSE(Find("btnReport")->isVisible());
  EXPECT_TRUE(Find("btnStart")->isVisible());
}

TEST_F(CreationPageTest, TheWindowStaysOpenWhileTheRunGoesOn) {
  testing::PumpProbe probe([this] { return Find("btnStop")->isVisible(); }, [this] { page_->close(); });
  Click("btnStart");
  EXPECT_TRUE(probe.Fired());
  EXPECT_TRUE(page_->isVisible());
  EXPECT_EQ(Text("labMsg"), "Process finished!");
}

TEST_F(CreationPageTest, ARefusedRunTellsWhyAndOffersNoResults) {
  wizard_.Variables[viProductName].Value = "..";
  Click("btnStart");
  ASSERT_EQ(dialogs_.Messages.size(), 1u);
  EXPECT_EQ(dialogs_.Messages[0].rfind("The process has been refused: ", 0), 0u) << dialogs_.Messages[0];
  EXPECT_EQ(dialogs_.MessageKinds, std::vector<platform::TMessageKind>{platform::TMessageKind::Error});
  EXPECT_EQ(Text("labMsg"), "Process refused!");
  EXPECT_TRUE(Text("labAdvice").startsWith("The process has been refused: ")) << Text("labAdvice").toStdString();
  EXPECT_TRUE(Text("labAdvice").endsWith("Nothing was written. Change what it names and start the process again."));
  EXPECT_EQ(Text("labTask"), "idle.");
  EXPECT_FALSE(Find("btnSaveJob")->isVisible());
  EXPECT_TRUE(Find("btnStart")->isVisible());
  EXPECT_EQ(navigation_, (std::vector<bool>{false, true}));
}

TEST_F(CreationPageTest, ShowsFailedCountersInRed) {
  root_.Write("TSA/Wizard/Templates/" + std::string(kTemplate) + "/Binary.dfm", "\xFF\r\nobject X: TForm\r\nend\r\n");
  Click("btnStart");
  ASSERT_EQ(Text("labMsg"), "Process finished!");
  EXPECT_EQ(Text("labFilesFailed"), "1");
  EXPECT_EQ(Find<QLabel>("labFilesFailed")->palette().color(QPalette::WindowText), QColor(Qt::red));
  EXPECT_NE(Find<QLabel>("labFilesProcessed")->palette().color(QPalette::WindowText), QColor(Qt::red));
}

TEST_F(CreationPageTest, SaveJobReplacesTheChosenFileOnceTheDialogConfirmed) {
  Click("btnStart");
  const std::string job = wizard_.JobsFolder + "Job.001.ini";
  const std::string before = root_.Read("TSA/Wizard/Jobs/Job.001.ini");
  dialogs_.Answers = {job};
  Click("btnSaveJob");

  ASSERT_EQ(dialogs_.Requests.size(), 1u);
  const platform::TFileDialogRequest& request = dialogs_.Requests[0];
  EXPECT_EQ(request.Title, " Select (or type in a name for) a Job file to save to:");
  EXPECT_EQ(request.Filter, "Job files (Job*.ini)|Job*.ini|All Configuration files (*.ini)|*.ini|All files (*.*)|*.*");
  EXPECT_EQ(request.DefaultExt, "ini");
  EXPECT_EQ(fs::path(request.Folder) / request.FileName, fs::path(job));
  const std::string after = root_.Read("TSA/Wizard/Jobs/Job.001.ini");
  EXPECT_NE(after, before);
  EXPECT_NE(after.find("Template=Applications"), std::string::npos) << after;
  EXPECT_TRUE(dialogs_.Messages.empty());
}

TEST_F(CreationPageTest, SeeReportOpensTheFileOrShowsItsText) {
  Click("btnStart");
  Click("btnReport");
  EXPECT_EQ(opened_, std::vector<std::string>{(root_.path() / "TSA/Wizard/Report.txt").string()});
  EXPECT_EQ(page_->findChild<QWidget*>("frmReport"), nullptr);

  viewer_works_ = false;
  Click("btnReport");
  auto* memo = Find<QPlainTextEdit>("memReport");
  ASSERT_NE(memo, nullptr);
  EXPECT_EQ(memo->toPlainText().toStdString() + "\n", [&] {
    std::string text = Report();
    for (auto at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n", at)) text.erase(at, 1);
    return text;
  }());
  EXPECT_EQ(Text("labTask"), "idle.");
}

TEST_F(CreationPageTest, OpenProjectsOutsideTheIdeOnlyTellsSo) {
  Click("btnStart");
  Click("btnOpen");
  EXPECT_EQ(dialogs_.Messages, std::vector<std::string>{" This feature is not available outside the IDE. "});
  EXPECT_EQ(dialogs_.MessageKinds, std::vector<platform::TMessageKind>{platform::TMessageKind::Information});
  EXPECT_EQ(Text("labTask"), "idle.");
}

}  // namespace
}  // namespace tsaw
