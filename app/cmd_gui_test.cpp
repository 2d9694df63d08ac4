// tsaw gui as a user runs it: the screenshots walk loads the module, steps through the pages
// offscreen, runs the creation and writes the pages as PNG files.

#include <gtest/gtest.h>

#include "testing/run_program.h"
#include "testing/temp_dir.h"

namespace tsaw {
namespace {

TEST(GuiCommandTest, WritesAScreenshotOfEachPage) {
  testing::TempDir out;
  const testing::ProgramRun run =
      testing::RunProgram(TSAW_EXE, {"gui", "--screenshots", (out.path() / "shots").string()});
  ASSERT_EQ(run.exit_status, 0) << run.err;
  for (const char* name : {"welcome.png", "templates.png", "templates-bad.png", "creation.png"}) {
    const std::string png = out.Read(std::string("shots/") + name);
    EXPECT_EQ(png.substr(0, 8), "\x89PNG\r\n\x1a\n") << name;
  }
}

}  // namespace
}  // namespace tsaw
