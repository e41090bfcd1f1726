// A bundle that refuses to start.
extern "C" __attribute__((visibility("default"))) int pluginMain(void*) { return -4321; }
