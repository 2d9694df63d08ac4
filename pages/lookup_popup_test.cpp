#include "pages/lookup_popup.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QRadioButton>
#include <QTimer>
#include <QToolButton>

#include <functional>
#include <memory>

#include "pages/page_widgets.h"
#include "pages/widget_test_support.h"

namespace tsaw {
namespace {

using testing::Find;
using testing::PageBench;
using testing::SetVar;
using testing::ShowActive;

// A Common page whose Author field has a look-up of three values, one of them twice.
class LookupPopupTest : public ::testing::Test {
 protected:
  LookupPopupTest() : bench_(1) {
    testing::AddLookup(bench_.Wizard, viAuthor, "Authors", "Pick an author", "Tom & Jerry\r\nAnn\r\nTom & Jerry\r\nBob");
    SetVar(bench_.Wizard, viAuthor, "Ann");
    SetVar(bench_.Wizard, viProjectsPrefix, "P");
    page_.reset(NewCommonPage(bench_.Services(), nullptr));
    ShowActive(*page_);
  }

  // Clicks the look-up button of `field`; `user` acts on the popup while it is up (it gets
  // nullptr when no popup opened).
  void Lookup(const char* button, std::function<void(TfrmLookup*)> user) {
    bool acted = false;
    QTimer::singleShot(0, [&] {
      acted = true;
      auto* popup = qobject_cast<TfrmLookup*>(QApplication::activePopupWidget());
      user(popup);
      if (popup != nullptr && popup->isVisible()) popup->close();
    });
    QTest::mouseClick(Find<QToolButton>(*page_, button), Qt::LeftButton);
    if (!acted) QCoreApplication::processEvents();
  }
  static void Press(TfrmLookup* popup, Qt::Key key) { QTest::keyClick(popup->focusWidget(), key); }
  QString Author() { return Find<QLineEdit>(*page_, "ediAuthor")->text(); }

  PageBench bench_;
  std::unique_ptr<QWidget> page_;
};

TEST_F(LookupPopupTest, ShowsEachValueOnceInOrderWithTheCurrentOneChecked) {
  EXPECT_EQ(Find<QToolButton>(*page_, "btnLookupAuthor")->toolTip(), " Pick an author ");
  EXPECT_EQ(Find<QToolButton>(*page_, "btnLookupCompanyName")->toolTip(),
            " Lookup for a value in a list \n No list of values to look up for this field ");
  QStringList captions;
  Lookup("btnLookupAuthor", [&](TfrmLookup* popup) {
    ASSERT_NE(popup, nullptr);
    for (QRadioButton* radio : popup->findChildren<QRadioButton*>())
      captions << radio->objectName() + "=" + radio->text() + (radio->isChecked() ? "*" : "");
    EXPECT_EQ(popup->focusWidget(), popup->findChild<QRadioButton*>("rad_0"));
  });
  EXPECT_EQ(captions, QStringList({"rad_0=Ann*", "rad_1=Bob", "rad_2=Tom && Jerry"}));
}

TEST_F(LookupPopupTest, EnterTakesTheChosenValueIntoTheField) {
  Lookup("btnLookupAuthor", [](TfrmLookup* popup) {
    Press(popup, Qt::Key_Down);
    Press(popup, Qt::Key_Down);
    Press(popup, Qt::Key_Return);
  });
  EXPECT_EQ(Author(), "Tom & Jerry");
  EXPECT_EQ(bench_.Wizard.Variables[viAuthor].Value, "Tom & Jerry");
  EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
}

TEST_F(LookupPopupTest, EscapeLeavesTheFieldUnchanged) {
  Lookup("btnLookupAuthor", [](TfrmLookup* popup) {
    Press(popup, Qt::Key_Down);
    Press(popup, Qt::Key_Escape);
  });
  EXPECT_EQ(Author(), "Ann");
  EXPECT_EQ(bench_.Wizard.Variables[viAuthor].Value, "Ann");
}

TEST_F(LookupPopupTest, DoubleClickTakesTheValue) {
  Lookup("btnLookupAuthor", [](TfrmLookup* popup) {
    QTest::mouseDClick(popup->findChild<QRadioButton*>("rad_1"), Qt::LeftButton);
  });
  EXPECT_EQ(Author(), "Bob");
}

TEST_F(LookupPopupTest, FieldWithoutLookupOpensNothingButTakesTheFocus) {
  bool opened = false;
  QTimer::singleShot(0, [&] { opened = QApplication::activePopupWidget() != nullptr; });
  auto* company = Find<QLineEdit>(*page_, "ediCompanyName");
  Lookup_Edit(bench_.Wizard, viCompanyName, company);
  QCoreApplication::processEvents();
  EXPECT_FALSE(opened);
  EXPECT_EQ(QApplication::focusWidget(), company);
}

TEST(LookupPopupPlaceTest, OpensBelowTheFieldOrAboveItAndStaysOnTheScreen) {
  const QRect screen(0, 0, 1000, 800);
  const QSize popup(200, 300);
  const struct {
    const char* name;
    QRect field;
    QPoint place;
  } cases[] = {
      {"room below", {100, 100, 300, 20}, {100, 120}},
      {"near the bottom edge: above", {100, 700, 300, 20}, {100, 400}},
      {"near the right edge: moved left", {900, 100, 300, 20}, {800, 120}},
      {"just room above", {100, 500, 300, 20}, {100, 200}},
      {"field off the left edge", {-50, 100, 300, 20}, {0, 120}},
  };
  for (const auto& c : cases) EXPECT_EQ(PopupPlace(c.field, popup, screen), c.place) << c.name;
  EXPECT_EQ(PopupPlace({100, 300, 300, 20}, QSize(200, 600), screen), QPoint(100, 200)) << "no room above or below";
  EXPECT_EQ(PopupPlace({100, 600, 300, 20}, QSize(200, 900), screen), QPoint(100, 0)) << "taller than the screen";
}

TEST(LookupPopupOwnTest, NothingPreselectedLeavesTheFirstRadioFocusedButUnchosen) {
  testing::TestApplication();
  TfrmLookup popup("Values", {"One", "Two"}, "Other", nullptr);
  QTimer::singleShot(0, [&] { QTest::keyClick(popup.focusWidget(), Qt::Key_Return); });
  popup.exec();
  EXPECT_FALSE(popup.findChild<QRadioButton*>("rad_0")->isChecked());
  EXPECT_EQ(popup.Selected(), "Other");
}

}  // namespace
}  // namespace tsaw
