#pragma once
// A shared module opened while the program runs, for entry points looked up by name.

#include <memory>
#include <string>

namespace tsaw::platform {

class TSharedModule {
 public:
  // Whether closing the module unloads its code. A module that brings in a toolkit (Qt) stays:
  // the toolkit's libraries keep exit handlers and threads that must not outlive their code.
  enum class TUnload { OnClose, Never };

  // Opens `file` with every symbol bound at once and none added to the program's own. On failure
  // returns nullptr and stores the loader's reason in `error`.
  static std::unique_ptr<TSharedModule> Open(const std::string& file, TUnload unload, std::string& error);
  ~TSharedModule();
  TSharedModule(const TSharedModule&) = delete;
  TSharedModule& operator=(const TSharedModule&) = delete;

  // The address the module exports under `symbol`; nullptr when it exports none.
  void* Find(const char* symbol) const;

 private:
  explicit TSharedModule(void* handle) : handle_(handle) {}

  void* handle_;
};

}  // namespace tsaw::platform
