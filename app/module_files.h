#pragma once
// Where the program finds a module of its own: beside the executable (the build tree), then in the
// installed library folder.

#include <filesystem>
#include <ostream>
#include <string_view>
#include <vector>

namespace tsaw::app {

// The places `file` is looked for, in order; empty when the executable's location cannot be read.
std::vector<std::filesystem::path> ModuleCandidates(std::string_view file);

// The first place of ModuleCandidates(file) that exists. When there is none, returns an empty
// path after one line on `err` naming the module as `what` and every place looked in.
std::filesystem::path FindModule(std::string_view what, std::string_view file, std::ostream& err);

}  // namespace tsaw::app
