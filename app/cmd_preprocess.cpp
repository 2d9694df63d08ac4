// tsaw preprocess: runs the template preprocessor over one file, as the creation run does for each
// ".dpr", ".pas" and ".inc" file, so that template authors can check their directives.

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <memory>
#include <optional>

#include "app/command.h"
#include "app/name_value_option.h"
#include "platform/runtime_text.h"
#include "preprocessor/model_processor.h"

namespace tsaw::app {
namespace {

struct PreprocessOptions {
  std::vector<std::string> defines;  // NAME=VALUE, in the order given
  std::string file = "-";
};

// Reads the whole of `stream` as bytes; nullopt with `error` set when reading fails.
std::optional<std::string> ReadAll(std::FILE* stream, std::string& error) {
  std::string bytes;
  char buffer[1 << 16];
  std::size_t count;
  while ((count = std::fread(buffer, 1, sizeof buffer, stream)) > 0) bytes.append(buffer, count);
  if (std::ferror(stream)) {
    error = std::string("cannot read: ") + std::strerror(errno);
    return std::nullopt;
  }
  return bytes;
}

// The bytes of `file`, or of standard input for "-"; nullopt with `error` set on failure.
std::optional<std::string> ReadInput(const std::string& file, std::string& error) {
  if (file == "-") return ReadAll(stdin, error);
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::fopen(file.c_str(), "rb"),
                                                         std::fclose);
  if (!stream) {
    error = std::string("cannot open: ") + std::strerror(errno);
    return std::nullopt;
  }
  return ReadAll(stream.get(), error);
}

// Writes `bytes` to standard output; false when that fails.
bool WriteOutput(const std::string& bytes) {
  return std::fwrite(bytes.data(), 1, bytes.size(), stdout) == bytes.size() &&
         std::fflush(stdout) == 0;
}

int RunPreprocess(const PreprocessOptions& options) {
  const std::string shown = options.file == "-" ? "standard input" : options.file;
  auto fail = [&shown](const std::string& message) {
    std::cerr << "tsaw: preprocess: " << shown << ": " << message << "\n";
    return kExitFailed;
  };
  std::string error;
  const std::optional<std::string> bytes = ReadInput(options.file, error);
  if (!bytes) return fail(error);

  TqrxModelProcessor processor;
  for (const std::string& define : options.defines) {
    const std::size_t equals = define.find('=');
    processor.Defines.Add(define.substr(0, equals), define.substr(equals + 1));
  }
  processor.Input = platform::SplitLines(*bytes);
  try {
    const std::string message = processor.Execute();
    if (!message.empty()) return fail(message);
  } catch (const TPreprocessorError& failure) {
    return fail(failure.what());
  }
  if (!WriteOutput(platform::JoinLines(processor.Output))) {
    return fail(std::string("cannot write the output: ") + std::strerror(errno));
  }
  return kExitOk;
}

std::function<int()> SetUpPreprocess(CLI::App& sub, const GlobalOptions&) {
  auto options = std::make_shared<PreprocessOptions>();
  sub.add_option("-D,--define", options->defines,
                 "Directive constant, such as ddUseTLG=1 (repeatable; kept in the order given)")
      ->check(NameValueCheck())
      ->allow_extra_args(false);
  sub.add_option("FILE", options->file,
                 "Source file to process; \"-\" or none reads standard input");
  return [options] { return RunPreprocess(*options); };
}

}  // namespace

Command MakePreprocessCommand() {
  return {"preprocess",
          "Evaluate the template directives of a Delphi source file and print the result",
          SetUpPreprocess};
}

}  // namespace tsaw::app
