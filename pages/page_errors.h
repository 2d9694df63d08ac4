#pragma once
// The numbered error list that every page's validation fills, and the character tests that the
// name rules share.

#include <string>
#include <string_view>

namespace tsaw {

// Errors of one validation, numbered from 1 and one blank line apart:
// "1 - first\r\n\r\n2 - second". A message may hold one CR LF of its own.
class TPageErrors {
 public:
  void Clear();
  // Appends `message` as the next numbered error.
  void Add_Error(std::string_view message);
  int Count() const { return count_; }
  bool Empty() const { return count_ == 0; }
  const std::string& Text() const { return text_; }

 private:
  int count_ = 0;
  std::string text_;
};

// The caption over the error list: "Page is ok" for no error, else "1 Error:", "3 Errors:".
std::string ValidationCaption(int error_count);

// True when `s` is not empty and begins with '0'..'9'.
bool StartsWithNumber(std::string_view s);
// True when `s` holds any character outside '0'-'9', 'A'-'Z', 'a'-'z' and '_'.
bool HasInvalidChars(std::string_view s);

}  // namespace tsaw
