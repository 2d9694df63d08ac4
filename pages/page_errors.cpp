#include "pages/page_errors.h"

#include <algorithm>

namespace tsaw {

namespace {

bool IsIdentifierChar(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_';
}

}  // namespace

void TPageErrors::Clear() {
  count_ = 0;
  text_.clear();
}

void TPageErrors::Add_Error(std::string_view message) {
  if (!text_.empty()) text_ += "\r\n\r\n";
  ++count_;
  text_ += std::to_string(count_);
  text_ += " - ";
  text_ += message;
}

std::string ValidationCaption(int error_count) {
  if (error_count == 0) return "Page is ok";
  return std::to_string(error_count) + (error_count == 1 ? " Error:" : " Errors:");
}

bool StartsWithNumber(std::string_view s) { return !s.empty() && s.front() >= '0' && s.front() <= '9'; }

bool HasInvalidChars(std::string_view s) { return !std::all_of(s.begin(), s.end(), IsIdentifierChar); }

}  // namespace tsaw
