// What LeakSanitizer is not to report of the project's programs.
//
// libfontconfig: pango keeps patterns of fonts as long as the process lives, in places where the sanitizer does not see
// them; their number does not grow with what is drawn.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_suppressions();
const char* __lsan_default_suppressions() { return "leak:libfontconfig\n"; }

// Nor is it to tell that it was not.
extern "C" __attribute__((visibility("default"))) const char* __lsan_default_options();
const char* __lsan_default_options() { return "print_suppressions=0"; }
