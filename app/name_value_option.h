#pragma once
// The check of options that take NAME=VALUE (preprocess's -D, create's --set): anything without
// "=" is a usage error.

#include <CLI/CLI.hpp>

namespace tsaw::app {

const CLI::Validator& NameValueCheck();

}  // namespace tsaw::app
