// A bundle that never comes back.
#include <unistd.h>

extern "C" __attribute__((visibility("default"))) int pluginMain(void*) {
  for (;;) pause();
}
