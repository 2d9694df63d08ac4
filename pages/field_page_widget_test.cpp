#include "pages/field_page_widget.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QToolButton>

#include <memory>

#include "pages/page_widgets.h"
#include "pages/widget_test_support.h"
#include "templates/template_info.h"

namespace tsaw {
namespace {

using testing::Find;
using testing::PageBench;
using testing::Retype;
using testing::SetPin;
using testing::SetVar;
using testing::ShowActive;

// A Common page over answers that pass every rule.
class CommonPageWidgetTest : public ::testing::Test {
 protected:
  explicit CommonPageWidgetTest(uint16_t plugins = 2) : bench_(plugins) {
    SetVar(bench_.Wizard, viProjectsPrefix, "P");
    SetVar(bench_.Wizard, viHostProjectName, "MyHost");
    SetPin(bench_.Wizard, viPluginProjectName, 1, "PinOne");
    if (plugins > 1) SetPin(bench_.Wizard, viPluginProjectName, 2, "PinTwo");
  }
  std::unique_ptr<QWidget> Open() { return std::unique_ptr<QWidget>(NewCommonPage(bench_.Services(), nullptr)); }
  QString Shown(const QWidget& page, const char* name) { return Find<QLineEdit>(page, name)->text(); }

  PageBench bench_;
};

TEST_F(CommonPageWidgetTest, TypingWritesTheWizardAndRevalidatesAtOnce) {
  auto page = Open();
  ShowActive(*page);
  auto* caption = Find<QLabel>(*page, "labValidationCap");
  auto* errors = Find<QPlainTextEdit>(*page, "memValidation");
  EXPECT_EQ(caption->text(), "Page is ok");
  EXPECT_EQ(bench_.NextEnabled, true);

  Retype(Find<QLineEdit>(*page, "ediProjectsPrefix"), "");
  EXPECT_EQ(bench_.Wizard.Variables[viProjectsPrefix].Value, "");
  EXPECT_EQ(caption->text(), "1 Error:");
  EXPECT_EQ(errors->toPlainText(),
            "1 - Projects Prefix (expanded to \"\") cannot be blank.\n"
            "It will be used to replace the Template Prefix at creation stage.");
  EXPECT_TRUE(errors->isVisible());
  EXPECT_EQ(bench_.NextEnabled, false);

  QTest::keyClicks(Find<QLineEdit>(*page, "ediProjectsPrefix"), "  My_Prefix");
  EXPECT_EQ(bench_.Wizard.Variables[viProjectsPrefix].Value, "My_Prefix");
  EXPECT_EQ(bench_.Wizard.Variables[viProjectsPrefix].IdfValue, "My_Prefix");
  EXPECT_EQ(caption->text(), "Page is ok");
  EXPECT_EQ(errors->toPlainText(), "");
  EXPECT_TRUE(errors->isVisible()) << "a page that becomes valid keeps the tab it shows";
  EXPECT_EQ(bench_.NextEnabled, true);
}

TEST_F(CommonPageWidgetTest, ExpandVariablesShowsAReadOnlyPreview) {
  SetVar(bench_.Wizard, viCompanyName, "Acme");
  SetVar(bench_.Wizard, viProductName, "#Company.Name# Tools");
  testing::AddLookup(bench_.Wizard, viProductName, "Products", "Pick one", "Rocket\r\nSled");
  auto page = Open();
  ShowActive(*page);
  auto* product = Find<QLineEdit>(*page, "ediProductName");
  auto* expand = Find<QCheckBox>(*page, "cbxExpand");

  QTest::mouseClick(expand, Qt::LeftButton);
  EXPECT_TRUE(expand->isChecked());
  EXPECT_EQ(product->text(), "Acme Tools");
  EXPECT_TRUE(product->isReadOnly());
  EXPECT_FALSE(Find<QToolButton>(*page, "btnLookupProductName")->isEnabled());
  QTest::keyClicks(product, "X");
  EXPECT_EQ(product->text(), "Acme Tools");
  EXPECT_EQ(bench_.Wizard.Variables[viProductName].Value, "#Company.Name# Tools");

  QTest::mouseClick(expand, Qt::LeftButton);
  EXPECT_EQ(product->text(), "#Company.Name# Tools");
  EXPECT_FALSE(product->isReadOnly());
  EXPECT_TRUE(Find<QToolButton>(*page, "btnLookupProductName")->isEnabled());
}

TEST_F(CommonPageWidgetTest, ALookupButtonWithoutAListIsOffAndSaysSo) {
  testing::AddLookup(bench_.Wizard, viAuthor, "Authors", "Pick an author", "Ann\r\nBob");
  testing::AddLookup(bench_.Wizard, viCopyright, "Copyrights", "Pick one", "");
  auto page = Open();
  ShowActive(*page);
  for (const char* name : {"btnLookupCompanyName", "btnLookupCopyright"}) {
    auto* lookup = Find<QToolButton>(*page, name);
    EXPECT_FALSE(lookup->isEnabled()) << name;
    EXPECT_TRUE(lookup->toolTip().endsWith("\n No list of values to look up for this field ")) << name;
  }
  auto* author = Find<QToolButton>(*page, "btnLookupAuthor");
  EXPECT_TRUE(author->isEnabled());
  EXPECT_EQ(author->toolTip(), " Pick an author ");
}

TEST_F(CommonPageWidgetTest, AFieldTheTemplateMarksReadOnlyCannotBeChangedAndLooksIt) {
  auto marked = std::make_shared<TTemplateInfo>();
  marked->IsTemplate = marked->IsValid = true;
  marked->FolderName = "Locked Demo";
  marked->ReadOnly.assign(viCompanyName + 1, false);
  marked->ReadOnly[viCompanyName] = true;
  bench_.Wizard.SelectedTemplate = marked;
  SetVar(bench_.Wizard, viCompanyName, "Acme");
  testing::AddLookup(bench_.Wizard, viCompanyName, "Companies", "Pick one", "Acme\r\nZeta");
  auto page = Open();
  ShowActive(*page);
  auto* company = Find<QLineEdit>(*page, "ediCompanyName");
  auto* product = Find<QLineEdit>(*page, "ediProductName");
  EXPECT_TRUE(company->isReadOnly());
  EXPECT_EQ(company->toolTip(), " Read-only: set by the template \"Locked Demo\" ");
  EXPECT_FALSE(Find<QToolButton>(*page, "btnLookupCompanyName")->isEnabled());
  EXPECT_NE(company->palette().color(QPalette::Base), product->palette().color(QPalette::Base));
  QTest::keyClicks(company, "X");
  EXPECT_EQ(bench_.Wizard.Variables[viCompanyName].Value, "Acme");

  auto* expand = Find<QCheckBox>(*page, "cbxExpand");
  QTest::mouseClick(expand, Qt::LeftButton);
  EXPECT_EQ(product->palette().color(QPalette::Base), company->palette().color(QPalette::Base))
      << "the preview looks read-only too";
  QTest::mouseClick(expand, Qt::LeftButton);
  EXPECT_TRUE(company->isReadOnly());
  EXPECT_FALSE(product->isReadOnly());
}

TEST_F(CommonPageWidgetTest, TheInformationTabsSwitchFromTheKeyboardWithoutMovingTheText) {
  auto page = Open();
  ShowActive(*page);
  QTabBar* tabs = Find<QTabWidget>(*page, "tabInfo")->tabBar();
  auto* validation = Find<QPlainTextEdit>(*page, "memValidation");
  auto* advice = Find<QPlainTextEdit>(*page, "memAdvice");
  ASSERT_TRUE(advice->isVisible());
  const QRect advice_place(advice->mapTo(page.get(), QPoint(0, 0)), advice->size());
  tabs->setFocus(Qt::TabFocusReason);
  QTest::keyClick(tabs, Qt::Key_Left);
  EXPECT_TRUE(validation->isVisible());
  EXPECT_EQ(QRect(validation->mapTo(page.get(), QPoint(0, 0)), validation->size()), advice_place);
  EXPECT_EQ(bench_.Memory.For(TPageKind::Common).LastInfoTab, kInfoTabValidation) << "the user's choice is kept";
  QTest::keyClick(tabs, Qt::Key_Right);
  EXPECT_TRUE(advice->isVisible());
  EXPECT_EQ(bench_.Memory.For(TPageKind::Common).LastInfoTab, kInfoTabAdvice);
}

TEST_F(CommonPageWidgetTest, CircularReferenceKeepsThePreviewOff) {
  SetVar(bench_.Wizard, viAuthor, "#Copyright#");
  SetVar(bench_.Wizard, viCopyright, "(C) #Author#");
  auto page = Open();
  ShowActive(*page);
  auto* expand = Find<QCheckBox>(*page, "cbxExpand");
  QTest::mouseClick(expand, Qt::LeftButton);
  EXPECT_FALSE(expand->isChecked());
  ASSERT_EQ(bench_.Dialogs.Messages.size(), 1u);
  EXPECT_EQ(bench_.Dialogs.MessageKinds, std::vector<platform::TMessageKind>{platform::TMessageKind::Warning});
  EXPECT_TRUE(bench_.Dialogs.Messages[0].starts_with("2 - CVR (Circular Variable Reference) Error:  "))
      << bench_.Dialogs.Messages[0];
  EXPECT_FALSE(Find<QLineEdit>(*page, "ediAuthor")->isReadOnly());
}

TEST_F(CommonPageWidgetTest, PluginSelectorSwitchesTheShownPlugin) {
  auto page = Open();
  ShowActive(*page);
  auto* selector = Find<QComboBox>(*page, "cboPluginIdx");
  EXPECT_TRUE(selector->isVisible());
  EXPECT_FALSE(Find<QLabel>(*page, "lab1Pin")->isVisible());
  ASSERT_EQ(selector->count(), 2);
  EXPECT_EQ(selector->itemText(0), " 1");
  EXPECT_EQ(Shown(*page, "ediPluginProjectName"), "PinOne");

  selector->setFocus();
  QTest::keyClick(selector, Qt::Key_Down);
  EXPECT_EQ(bench_.Wizard.PluginIndex, 2);
  EXPECT_EQ(bench_.Wizard.Variables[viPluginIndex].Value, "2");
  EXPECT_EQ(Shown(*page, "ediPluginProjectName"), "PinTwo");

  Retype(Find<QLineEdit>(*page, "ediPluginProjectName"), "PinOne");
  EXPECT_EQ(bench_.Wizard.Variables[viPluginProjectName].Pins[2]->Value, "PinOne");
  EXPECT_EQ(bench_.Wizard.Variables[viPluginProjectName].Pins[1]->Value, "PinOne");
  EXPECT_EQ(Find<QLabel>(*page, "labValidationCap")->text(), "1 Error:");
}

class SinglePluginCommonPageTest : public CommonPageWidgetTest {
 protected:
  SinglePluginCommonPageTest() : CommonPageWidgetTest(1) {}
};

TEST_F(SinglePluginCommonPageTest, SelectorGivesWayToTheFixedLabel) {
  auto page = Open();
  ShowActive(*page);
  EXPECT_FALSE(Find<QComboBox>(*page, "cboPluginIdx")->isVisible());
  auto* single = Find<QLabel>(*page, "lab1Pin");
  EXPECT_TRUE(single->isVisible());
  EXPECT_EQ(single->text(), "  1");
  EXPECT_EQ(single->toolTip(), " The template selected provides support for a single plugin. ");
}

TEST_F(CommonPageWidgetTest, AdviceFollowsTheFocusAndThePageRemembersItsTabAndControl) {
  auto page = Open();
  auto* advice = Find<QPlainTextEdit>(*page, "memAdvice");
  EXPECT_EQ(advice->toPlainText(), "Click on a field above to get a sensitive advice.");
  ShowActive(*page);
  EXPECT_EQ(QApplication::focusWidget(), Find<QWidget>(*page, "ediCompanyName")) << "first field on first visit";
  EXPECT_TRUE(advice->isVisible());

  QTest::mouseClick(Find<QLineEdit>(*page, "ediProjectsPrefix"), Qt::LeftButton);
  EXPECT_EQ(advice->toPlainText(),
            "\"Projects Prefix\" may be optionally referenced in the \"Host Project Name\" and \"Plugin Project "
            "Name\".");
  QTabBar* tabs = Find<QTabWidget>(*page, "tabInfo")->tabBar();
  QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(0).center());
  EXPECT_FALSE(advice->isVisible());
  page.reset();

  page = Open();
  ShowActive(*page);
  EXPECT_TRUE(Find<QPlainTextEdit>(*page, "memValidation")->isVisible());
  EXPECT_EQ(QApplication::focusWidget(), Find<QWidget>(*page, "ediProjectsPrefix"));
  EXPECT_EQ(bench_.Memory.For(TPageKind::Manager).LastInfoTab, kInfoTabNone) << "other pages keep their own";
}

TEST(PluginPageWidgetTest, DescriptionIsAMultiLineFieldThatThePreviewLocks) {
  PageBench bench(3);
  for (uint16_t pin : {1, 3}) SetPin(bench.Wizard, viPluginVersion, pin, "1.0");
  SetPin(bench.Wizard, viPluginDescription, 1, "First\r\nSecond");
  std::unique_ptr<QWidget> page(NewPluginPage(bench.Services(), nullptr));
  ShowActive(*page);
  EXPECT_EQ(Find<QLabel>(*page, "labValidationCap")->text(), "1 Error:");
  EXPECT_TRUE(Find<QPlainTextEdit>(*page, "memValidation")->toPlainText().startsWith("1 - Plugin[2] Version"));
  EXPECT_EQ(Find<QToolButton>(*page, "btnLookupVersion")->toolTip(),
            " Lookup for a vaue in a list \n No list of values to look up for this field ");

  auto* description = Find<QPlainTextEdit>(*page, "memDescription");
  EXPECT_EQ(description->toPlainText(), "First\nSecond");
  description->setFocus();
  QTest::keyClick(description, Qt::Key_End, Qt::ControlModifier);
  QTest::keyClick(description, Qt::Key_Return);
  QTest::keyClicks(description, "Third");
  EXPECT_EQ(bench.Wizard.Variables[viPluginDescription].Pins[1]->Value, "First\r\nSecond\r\nThird");

  QTest::mouseClick(Find<QCheckBox>(*page, "cbxExpand"), Qt::LeftButton);
  EXPECT_TRUE(description->isReadOnly());
}

}  // namespace
}  // namespace tsaw
