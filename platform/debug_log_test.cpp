#include "platform/debug_log.h"

#include <gtest/gtest.h>

#include "testing/recording_sink.h"

namespace tsaw::platform {
namespace {

TEST(DebugLogTest, IsOffAndSilentWithoutASink) {
  auto previous = SetDebugSink(nullptr);
  EXPECT_FALSE(DebugEnabled());
  DebugLine("nobody hears this");
  { ScopedRoutine routine("Unit.Class.Method"); }
  SetDebugSink(std::move(previous));
}

TEST(DebugLogTest, RoutineWritesEntryAndExitAroundDetailLines) {
  testing::RecordingDebugLog log;
  {
    ScopedRoutine routine("TSaW_Common.Str2Idf");
    DebugLine("detail");
  }
  EXPECT_EQ(log.lines(), (std::vector<std::string>{"TSaW_Common.Str2Idf entered", "detail",
                                                   "TSaW_Common.Str2Idf left"}));
}

TEST(DebugLogTest, ExceptionLineNamesRoutineStepAndMessage) {
  EXPECT_EQ(ExceptionLine("TSaW_frmCreation.TfrmCreation.btnStart_OnClick", 310, "disk full"),
            "TSA EXCEPTION at TSaW_frmCreation.TfrmCreation.btnStart_OnClick.310: disk full");
}

TEST(DebugLogTest, LogPathFollowsXdgStateHome) {
  setenv("XDG_STATE_HOME", "/tmp/state-here", 1);
  EXPECT_EQ(DebugLogPath(), "/tmp/state-here/tsaw/debug.log");
  unsetenv("XDG_STATE_HOME");
}

}  // namespace
}  // namespace tsaw::platform
