#pragma once
// The wizard window's size and place on the screen: the last ones when they still fit, else a
// size that fits the screen's free area; kept between sessions in a settings file.

#include <QRect>
#include <QSize>

#include <filesystem>
#include <optional>

class QWidget;

namespace tsaw {

// The size the window asks for on a screen with room, and the least it can be made.
inline constexpr QSize kPreferredWindowSize{900, 640};
inline constexpr QSize kMinimumWindowSize{640, 480};

// Room kept around the window's inner area for the window manager's frame and title bar.
inline constexpr int kFrameAllowance = 8;
inline constexpr int kTitleAllowance = 32;

// The window's inner geometry on a screen whose free area is `available`: the `remembered` one
// moved and shrunk as far as needed to lie on the screen, or, without one, the preferred size
// (shrunk to fit) centred. Never smaller than the minimum, unless the screen itself is smaller.
QRect FittedGeometry(const QRect& available, const std::optional<QRect>& remembered);

// Gives `window` its minimum size and its fitted geometry on its screen, reading the last one from
// `settings_file` (INI format; none when empty, missing or unreadable).
void PlaceWindow(QWidget& window, const std::filesystem::path& settings_file);

// Writes `window`'s geometry (the normal one, when maximized, with that state) to `settings_file`;
// does nothing when it is empty. Failures are not reported: the next session just opens fitted.
void RememberWindowPlace(const QWidget& window, const std::filesystem::path& settings_file);

// The settings file of the window: "tsaw/window.ini" below the XDG config folder, or empty when
// there is none.
std::filesystem::path WindowSettingsFile();

}  // namespace tsaw
