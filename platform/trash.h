#pragma once
// Moving a folder tree to the user's trash (the freedesktop.org trash: files/ and info/ below
// $XDG_DATA_HOME/Trash, or a ".Trash-$uid" folder at the top of another file system). Nothing is
// ever deleted outright: a folder that cannot go to the trash stays where it is.

#include <filesystem>
#include <memory>
#include <string>

namespace tsaw::platform {

class Trash {
 public:
  virtual ~Trash() = default;
  // Moves `folder` with everything below it to the trash. On success returns true; on failure
  // returns false with `error` saying what went wrong and where, and `folder` is left untouched.
  virtual bool MoveToTrash(const std::filesystem::path& folder, std::string& error) = 0;
};

// The trash of the user running the program: the home trash ($XDG_DATA_HOME/Trash, else
// ~/.local/share/Trash) for folders on the home trash's file system; for a folder on another file
// system "$topdir/.Trash/$uid" (when that folder is set up as the freedesktop.org rules require)
// or "$topdir/.Trash-$uid". The environment is read on every call.
std::unique_ptr<Trash> MakeUserTrash();

// The text of a ".trashinfo" file for `original` (an absolute or top-dir-relative path, URL-encoded
// here) deleted at `deletion_date` ("YYYY-MM-DDThh:mm:ss").
std::string TrashInfoText(const std::string& original, const std::string& deletion_date);

}  // namespace tsaw::platform
