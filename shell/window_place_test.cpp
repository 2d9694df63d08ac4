#include "shell/window_place.h"

#include <gtest/gtest.h>

#include <QWidget>

#include "testing/qt_application.h"
#include "testing/temp_dir.h"

namespace tsaw {
namespace {

TEST(WindowPlaceTest, FitsTheWindowOnTheScreensFreeArea) {
  const struct {
    const char* name;
    QRect available;
    std::optional<QRect> remembered;
    QRect fitted;
  } cases[] = {
      {"room: preferred size, centred", {0, 0, 1920, 1040}, std::nullopt, {510, 212, 900, 640}},
      // 1920x1080 at 200 %: 960x540 logical, less a panel.
      {"small screen: shrunk to the free area", {0, 0, 960, 510}, std::nullopt, {30, 32, 900, 470}},
      {"smaller than the minimum: the screen wins", {0, 0, 600, 400}, std::nullopt, {8, 32, 584, 360}},
      {"remembered and fitting: kept", {0, 0, 1920, 1040}, QRect(100, 120, 1000, 700), {100, 120, 1000, 700}},
      {"remembered off the bottom right: moved on", {0, 0, 1280, 800}, QRect(1000, 600, 700, 500),
       {572, 292, 700, 500}},
      {"remembered too big: shrunk", {0, 0, 1280, 800}, QRect(0, 0, 2000, 1500), {8, 32, 1264, 760}},
      {"remembered too small: the minimum", {0, 0, 1280, 800}, QRect(50, 60, 200, 100), {50, 60, 640, 480}},
      {"second screen to the left", {-1280, 0, 1280, 800}, QRect(-1200, 100, 700, 500), {-1200, 100, 700, 500}},
  };
  for (const auto& c : cases) EXPECT_EQ(FittedGeometry(c.available, c.remembered), c.fitted) << c.name;
}

TEST(WindowPlaceTest, TheNextWindowOpensWhereTheLastOneWas) {
  testing::TestApplication();
  testing::TempDir dir;
  const std::filesystem::path settings = dir.path() / "config/tsaw/window.ini";
  {
    QWidget first;
    PlaceWindow(first, settings);
    EXPECT_GE(first.minimumWidth(), 1);
    first.setGeometry(40, 50, 700, 500);
    RememberWindowPlace(first, settings);
  }
  ASSERT_TRUE(std::filesystem::exists(settings));
  QWidget second;
  PlaceWindow(second, settings);
  EXPECT_EQ(second.geometry(), QRect(40, 50, 700, 500));
  QWidget unremembered;
  PlaceWindow(unremembered, {});
  EXPECT_NE(unremembered.geometry(), QRect(40, 50, 700, 500));
}

}  // namespace
}  // namespace tsaw
