#include "platform/shared_module.h"

#include <gtest/gtest.h>

namespace tsaw::platform {
namespace {

TEST(SharedModuleTest, FindsWhatAModuleExports) {
  std::string error;
  const auto libc = TSharedModule::Open("libc.so.6", TSharedModule::TUnload::Never, error);
  ASSERT_NE(libc, nullptr) << error;
  EXPECT_NE(libc->Find("getpid"), nullptr);
  EXPECT_EQ(libc->Find("tsaw_no_such_entry"), nullptr);
}

TEST(SharedModuleTest, AFileThatWillNotOpenSaysWhy) {
  std::string error;
  EXPECT_EQ(TSharedModule::Open("/nonexistent/tsaw-gui.so", TSharedModule::TUnload::OnClose, error), nullptr);
  EXPECT_NE(error.find("/nonexistent/tsaw-gui.so"), std::string::npos) << error;
}

}  // namespace
}  // namespace tsaw::platform
