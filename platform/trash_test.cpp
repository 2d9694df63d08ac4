#include "platform/trash.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "testing/temp_dir.h"

namespace tsaw::platform {
namespace {
namespace fs = std::filesystem;

// Points XDG_DATA_HOME at a folder of the test for the life of the object.
class ScopedDataHome {
 public:
  explicit ScopedDataHome(const fs::path& folder) {
    if (const char* old = std::getenv("XDG_DATA_HOME")) saved_ = old, had_ = true;
    setenv("XDG_DATA_HOME", folder.c_str(), 1);
  }
  ~ScopedDataHome() {
    if (had_) {
      setenv("XDG_DATA_HOME", saved_.c_str(), 1);
    } else {
      unsetenv("XDG_DATA_HOME");
    }
  }

 private:
  std::string saved_;
  bool had_ = false;
};

std::string ReadAll(const fs::path& file) {
  std::ifstream in(file);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

std::string WithoutDate(std::string info) {
  return info.substr(0, info.find("DeletionDate=") + 13);
}

TEST(TrashTest, MovesTheTreeAndWritesItsInfo) {
  testing::TempDir dir;
  ScopedDataHome data_home(dir.path() / "data");
  dir.Write("out/My Product/a.txt", "A");
  std::string error;
  ASSERT_TRUE(MakeUserTrash()->MoveToTrash(dir.path() / "out/My Product", error)) << error;
  EXPECT_FALSE(fs::exists(dir.path() / "out/My Product"));
  EXPECT_EQ(dir.Read("data/Trash/files/My Product/a.txt"), "A");
  const std::string info = ReadAll(dir.path() / "data/Trash/info/My Product.trashinfo");
  const std::string expected_path = (dir.path() / "out/My%20Product").string();
  EXPECT_EQ(WithoutDate(info), "[Trash Info]\nPath=" + expected_path + "\nDeletionDate=");
  EXPECT_EQ(info.size(), WithoutDate(info).size() + 20) << info;  // "YYYY-MM-DDThh:mm:ss\n"
}

TEST(TrashTest, GivesEachDeletionItsOwnName) {
  testing::TempDir dir;
  ScopedDataHome data_home(dir.path() / "data");
  auto trash = MakeUserTrash();
  std::string error;
  for (const char* content : {"first", "second", "third"}) {
    dir.Write("out/Set/f.txt", content);
    ASSERT_TRUE(trash->MoveToTrash(dir.path() / "out/Set", error)) << error;
  }
  EXPECT_EQ(dir.Read("data/Trash/files/Set/f.txt"), "first");
  EXPECT_EQ(dir.Read("data/Trash/files/Set.2/f.txt"), "second");
  EXPECT_EQ(dir.Read("data/Trash/files/Set.3/f.txt"), "third");
  EXPECT_TRUE(fs::exists(dir.path() / "data/Trash/info/Set.3.trashinfo"));
}

TEST(TrashTest, RefusesAMissingFolderAndSaysWhich) {
  testing::TempDir dir;
  ScopedDataHome data_home(dir.path() / "data");
  std::string error;
  EXPECT_FALSE(MakeUserTrash()->MoveToTrash(dir.path() / "absent", error));
  EXPECT_EQ(error, "Cannot move '" + (dir.path() / "absent").string() +
                       "' to the trash: No such file or directory");
  EXPECT_FALSE(fs::exists(dir.path() / "data/Trash/info/absent.trashinfo"));
}

TEST(TrashTest, InfoTextEncodesThePath) {
  EXPECT_EQ(TrashInfoText("/a b/ü%", "2024-01-02T03:04:05"),
            "[Trash Info]\nPath=/a%20b/%C3%BC%25\nDeletionDate=2024-01-02T03:04:05\n");
}

}  // namespace
}  // namespace tsaw::platform
