#include "shell/window_place.h"

#include <QScreen>
#include <QSettings>
#include <QWidget>

#include <algorithm>

#include "platform/xdg_folders.h"

namespace tsaw {
namespace {

constexpr const char* kGeometryKey = "Window/Geometry";
constexpr const char* kMaximizedKey = "Window/Maximized";

QSettings SettingsAt(const std::filesystem::path& file) {
  return QSettings(QString::fromStdString(file.string()), QSettings::IniFormat);
}

// `value` moved into [low, high - length] (to `low` when the length does not fit at all).
int Clamped(int value, int length, int low, int high) { return std::max(low, std::min(value, high - length)); }

}  // namespace

QRect FittedGeometry(const QRect& available, const std::optional<QRect>& remembered) {
  const QRect room = available.adjusted(kFrameAllowance, kTitleAllowance, -kFrameAllowance, -kFrameAllowance);
  const QSize least = kMinimumWindowSize.boundedTo(room.size());
  const QSize wanted = remembered && remembered->isValid() ? remembered->size() : kPreferredWindowSize;
  const QSize size = wanted.boundedTo(room.size()).expandedTo(least);
  QPoint place = room.topLeft() + QPoint((room.width() - size.width()) / 2, (room.height() - size.height()) / 2);
  if (remembered && remembered->isValid()) place = remembered->topLeft();
  return {QPoint(Clamped(place.x(), size.width(), room.left(), room.right() + 1),
                 Clamped(place.y(), size.height(), room.top(), room.bottom() + 1)),
          size};
}

void PlaceWindow(QWidget& window, const std::filesystem::path& settings_file) {
  std::optional<QRect> remembered;
  bool maximized = false;
  if (!settings_file.empty()) {
    const QSettings settings = SettingsAt(settings_file);
    const QRect saved = settings.value(kGeometryKey).toRect();
    if (saved.isValid()) remembered = saved;
    maximized = settings.value(kMaximizedKey, false).toBool();
  }
  const QScreen* screen = window.screen();
  const QRect available = screen ? screen->availableGeometry() : QRect(QPoint(0, 0), kPreferredWindowSize);
  const QRect fitted = FittedGeometry(available, remembered);
  window.setMinimumSize(kMinimumWindowSize.boundedTo(fitted.size()));
  window.setGeometry(fitted);
  if (maximized) window.setWindowState(window.windowState() | Qt::WindowMaximized);
}

void RememberWindowPlace(const QWidget& window, const std::filesystem::path& settings_file) {
  if (settings_file.empty()) return;
  std::error_code ignored;
  std::filesystem::create_directories(settings_file.parent_path(), ignored);
  QSettings settings = SettingsAt(settings_file);
  settings.setValue(kGeometryKey, window.isMaximized() ? window.normalGeometry() : window.geometry());
  settings.setValue(kMaximizedKey, window.isMaximized());
  settings.sync();
}

std::filesystem::path WindowSettingsFile() {
  const std::optional<std::filesystem::path> config = platform::XdgConfigHome();
  return config ? *config / "tsaw" / "window.ini" : std::filesystem::path();
}

}  // namespace tsaw
