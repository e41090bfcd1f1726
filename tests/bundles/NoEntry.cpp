// A shared library that is no bundle: it has no pluginMain.
extern "C" __attribute__((visibility("default"))) int someFunction() { return 1; }
