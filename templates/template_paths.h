#pragma once
// Template paths as users and Job files write them: below the templates folder, with "/" or "\"
// between folders; and the nearest known paths to one that names no template.

#include <string>
#include <string_view>
#include <vector>

#include "model/wizard.h"
#include "templates/catalogue.h"

namespace tsaw {

// `value` with "/" between folders and no trailing separator; empty when it names nothing or
// would lead out of the templates folder (absolute, or a ".." part).
std::string RelativeTemplatePath(std::string value);

// A template's full path (a record's PartialPath) as --template and Job files take it: below the
// templates folder of `wizard`, "/" between folders.
std::string TemplatePathOf(const TWizard& wizard, std::string_view partial_path);

// The paths (as TemplatePathOf gives them) of every template in the catalogue, in tree order.
std::vector<std::string> TemplatePaths(const TWizard& wizard, const TCatalogue& catalogue);

// Up to `limit` of `known` nearest to `wanted` by edit distance, ignoring letter case, nearest
// first (ties in the order of `known`). Paths more than half their length away are left out.
std::vector<std::string> NearestPaths(const std::vector<std::string>& known, std::string_view wanted,
                                      size_t limit);

}  // namespace tsaw
