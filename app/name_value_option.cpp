#include "app/name_value_option.h"

#include <string>

namespace tsaw::app {

const CLI::Validator& NameValueCheck() {
  static const CLI::Validator check(
      [](std::string& value) {
        return value.find('=') == std::string::npos ? "expected NAME=VALUE, got \"" + value + "\"" : std::string();
      },
      "NAME=VALUE");
  return check;
}

}  // namespace tsaw::app
