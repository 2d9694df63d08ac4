#include "testing/recording_trash.h"

namespace tsaw::testing {

bool RecordingTrash::MoveToTrash(const std::filesystem::path& folder, std::string& error) {
  if (Refuse) {
    error = "Cannot move '" + folder.string() + "' to the trash: refused by the test";
    return false;
  }
  std::error_code ec;
  const auto target = holding_.path() / (std::to_string(Moved.size() + 1) + "-" + folder.filename().string());
  std::filesystem::rename(folder, target, ec);
  if (ec) {
    error = "Cannot move '" + folder.string() + "' to the trash: " + ec.message();
    return false;
  }
  Moved.push_back(folder);
  return true;
}

}  // namespace tsaw::testing
