// The wizard's plug-in module: the host loads it and calls RegisterTessera, its only export.

#include <exception>

#include "platform/plugin_host.h"
#include "shell/plugin_object.h"

// Creates the wizard's plug-in object, owned by the caller; nullptr when it cannot be made.
extern "C" __attribute__((visibility("default"))) tsaw::platform::TqrxTsa* RegisterTessera() {
  try {
    return new tsaw::TtsaWizard();
  } catch (const std::exception&) {
    return nullptr;
  }
}
