#include "platform/shared_module.h"

#include <dlfcn.h>

namespace tsaw::platform {

std::unique_ptr<TSharedModule> TSharedModule::Open(const std::string& file, TUnload unload, std::string& error) {
  const int keep = unload == TUnload::Never ? RTLD_NODELETE : 0;
  void* handle = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL | keep);
  if (!handle) {
    const char* why = dlerror();
    error = why ? why : "unknown error";
    return nullptr;
  }
  return std::unique_ptr<TSharedModule>(new TSharedModule(handle));
}

TSharedModule::~TSharedModule() { dlclose(handle_); }

void* TSharedModule::Find(const char* symbol) const { return dlsym(handle_, symbol); }

}  // namespace tsaw::platform
