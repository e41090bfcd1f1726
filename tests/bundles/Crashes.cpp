// A bundle that crashes when it starts.
#include <csignal>

extern "C" __attribute__((visibility("default"))) int pluginMain(void*) {
  raise(SIGSEGV);
  return 0;
}
