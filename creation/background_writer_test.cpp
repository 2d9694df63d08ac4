#include "creation/background_writer.h"

#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>

namespace tsaw::creation {
namespace {

TEST(BackgroundWriterTest, GivesEachJobsResultAndReasonInTurn) {
  TBackgroundWriter writer;
  int done = 0;
  for (int job = 0; job < 10000; ++job) {
    writer.Start([job, &done](std::string& error) {
      ++done;
      if (job % 3 == 0) return true;
      error = "job " + std::to_string(job);
      return false;
    });
    std::string error;
    const bool result = writer.Wait(error);
    ASSERT_EQ(result, job % 3 == 0) << job;
    ASSERT_EQ(error, result ? "" : "job " + std::to_string(job));
    ASSERT_EQ(done, job + 1);
  }
}

TEST(BackgroundWriterTest, AJobsExceptionIsThrownByWaitAndTheWriterGoesOn) {
  TBackgroundWriter writer;
  writer.Start([](std::string&) -> bool { throw std::runtime_error("disk on fire"); });
  std::string error;
  EXPECT_THROW(writer.Wait(error), std::runtime_error);
  writer.Start([](std::string&) { return true; });
  EXPECT_TRUE(writer.Wait(error));
}

TEST(BackgroundWriterTest, ItsEndWaitsForTheJobInFlight) {
  bool finished = false;
  {
    TBackgroundWriter writer;
    writer.Start([&finished](std::string&) {
      std::this_thread::sleep_for(std::chrono::milliseconds(20));
      finished = true;
      return true;
    });
  }
  EXPECT_TRUE(finished);
}

}  // namespace
}  // namespace tsaw::creation
