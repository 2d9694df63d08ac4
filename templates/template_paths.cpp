#include "templates/template_paths.h"

#include <algorithm>
#include <filesystem>
#include <numeric>

#include "platform/runtime_text.h"

namespace tsaw {
namespace {

// Paths longer than this get no suggestions: the distance costs the product of the two lengths.
constexpr size_t kMaxComparedLength = 1024;

size_t EditDistance(std::string_view a, std::string_view b) {
  std::vector<size_t> row(b.size() + 1);
  std::iota(row.begin(), row.end(), size_t{0});
  for (size_t i = 1; i <= a.size(); ++i) {
    size_t diagonal = row[0];
    row[0] = i;
    for (size_t j = 1; j <= b.size(); ++j) {
      const size_t above = row[j];
      const size_t change = diagonal + (platform::LowerAscii(a[i - 1]) == platform::LowerAscii(b[j - 1]) ? 0 : 1);
      row[j] = std::min({above + 1, row[j - 1] + 1, change});
      diagonal = above;
    }
  }
  return row[b.size()];
}

void CollectTemplates(const TWizard& wizard, const TCatalogueNode& node, std::vector<std::string>& paths) {
  for (const auto& child : node.Children) {
    if (child->Record && child->Record->IsTemplate) paths.push_back(TemplatePathOf(wizard, child->Record->PartialPath));
    CollectTemplates(wizard, *child, paths);
  }
}

}  // namespace

std::string RelativeTemplatePath(std::string value) {
  for (char& c : value) {
    if (c == '\\') c = '/';
  }
  while (!value.empty() && value.back() == '/') value.pop_back();
  if (value.empty() || value.front() == '/') return {};
  for (const auto& part : std::filesystem::path(value)) {
    if (part == "..") return {};
  }
  return value;
}

std::string TemplatePathOf(const TWizard& wizard, std::string_view partial_path) {
  if (partial_path.starts_with(wizard.TemplatesFolder)) partial_path.remove_prefix(wizard.TemplatesFolder.size());
  std::string path(partial_path);
  for (char& c : path) {
    if (c == '\\') c = '/';
  }
  return path;
}

std::vector<std::string> TemplatePaths(const TWizard& wizard, const TCatalogue& catalogue) {
  std::vector<std::string> paths;
  CollectTemplates(wizard, catalogue.Root(), paths);
  return paths;
}

std::vector<std::string> NearestPaths(const std::vector<std::string>& known, std::string_view wanted,
                                      size_t limit) {
  if (wanted.size() > kMaxComparedLength) return {};
  std::vector<std::pair<size_t, const std::string*>> near;
  for (const std::string& path : known) {
    if (path.size() > kMaxComparedLength) continue;
    const size_t distance = EditDistance(path, wanted);
    if (2 * distance <= std::max(path.size(), wanted.size())) near.emplace_back(distance, &path);
  }
  std::stable_sort(near.begin(), near.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<std::string> nearest;
  for (size_t i = 0; i < near.size() && i < limit; ++i) nearest.push_back(*near[i].second);
  return nearest;
}

}  // namespace tsaw
