// Test helper, preloaded into a program under test: kills the program (SIGKILL, as a crash or a
// power cut would end it) just before its Nth rename() into a given folder. Set
// TSAW_TEST_KILL_DIR to the folder and TSAW_TEST_KILL_AT to N.

#include <dlfcn.h>

#include <csignal>
#include <cstdlib>
#include <cstring>

extern "C" int rename(const char* from, const char* to) {
  using Rename = int (*)(const char*, const char*);
  static const Rename real = reinterpret_cast<Rename>(dlsym(RTLD_NEXT, "rename"));
  static int count = 0;
  const char* folder = std::getenv("TSAW_TEST_KILL_DIR");
  const char* at = std::getenv("TSAW_TEST_KILL_AT");
  if (folder && at && std::strncmp(to, folder, std::strlen(folder)) == 0 && ++count == std::atoi(at)) {
    std::raise(SIGKILL);
  }
  return real(from, to);
}
