#pragma once
// Test helper: a trash that records what it was given and keeps it in a temporary folder, or
// refuses everything when told to.

#include <filesystem>
#include <string>
#include <vector>

#include "platform/trash.h"
#include "testing/temp_dir.h"

namespace tsaw::testing {

class RecordingTrash : public platform::Trash {
 public:
  // Moves `folder` into the holding folder (as "<n>-<name>") and records it; with Refuse set,
  // records nothing, leaves the folder and fails with "refused by the test".
  bool MoveToTrash(const std::filesystem::path& folder, std::string& error) override;

  bool Refuse = false;
  std::vector<std::filesystem::path> Moved;
  const std::filesystem::path& Holding() const { return holding_.path(); }

 private:
  TempDir holding_;
};

}  // namespace tsaw::testing
