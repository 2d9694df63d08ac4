#pragma once
// The one error of the template preprocessor.

#include <cstdint>
#include <stdexcept>
#include <string>

namespace tsaw {

// Raised when a text cannot be processed: an {$ELSE} with no open block, or blocks nested deeper
// than the processor follows. The message names the line (counted in the text being processed).
class TPreprocessorError : public std::runtime_error {
 public:
  TPreprocessorError(std::int64_t line, const std::string& message)
      : std::runtime_error("line " + std::to_string(line) + ": " + message), line_(line) {}
  std::int64_t Line() const { return line_; }

 private:
  std::int64_t line_;
};

}  // namespace tsaw
