#pragma once
// The directive constants of one processing run: "name=value" lines in the order they were added.

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace tsaw {

class TDefines {
 public:
  struct Entry {
    std::string Name;
    std::string Value;
  };

  // Appends the line `name`=`value`, also when the name is already present (the first one wins).
  void Add(std::string_view name, std::string_view value);
  bool Empty() const { return entries_.empty(); }
  const std::vector<Entry>& Entries() const { return entries_; }

  // The value of the first line whose name equals `name` ignoring ASCII letter case; empty when
  // there is none.
  std::string_view Value(std::string_view name) const;
  // Sets the value of the first line named `name` (ignoring case). A name not in the table is
  // never added: returns false and changes nothing.
  bool SetExisting(std::string_view name, std::string_view value);

  // Index of the first line named `name` (ignoring case), or Entries().size() when none.
  std::size_t IndexOf(std::string_view name) const;
  // Sets the value of the line at `index`, which must be below Entries().size().
  void SetValueAt(std::size_t index, std::string_view value) { entries_[index].Value = value; }

 private:
  // Names compared as the table compares them, ignoring ASCII letter case.
  struct TFoldedHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view name) const;
  };
  struct TFoldedEqual {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const;
  };

  std::vector<Entry> entries_;
  // The index of the first line of each name: a run's table holds thousands of constants when a
  // Project Set has many plug-ins, too many to search line by line for every name.
  std::unordered_map<std::string, std::size_t, TFoldedHash, TFoldedEqual> first_;
};

}  // namespace tsaw
