#pragma once
// tsaw gui --screenshots: steps through the wizard's window offscreen and saves each page.

#include <filesystem>
#include <ostream>

class QWidget;

namespace tsaw::app {

// Steps through the wizard frame opened under `host` as a user would and writes a PNG of every
// page to `dir`, the last after a finished run. Returns the exit status; each page or step that
// fails is a line on `err`.
int WriteScreenshots(QWidget& host, const std::filesystem::path& dir, std::ostream& err);

}  // namespace tsaw::app
