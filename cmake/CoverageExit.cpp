// Keeps the counts of processes that end at once, as forks do that try something: put in the place of _exit by the
// linker in builds that count.
extern "C" {

void __gcov_dump(void);
[[noreturn]] void __real__exit(int code);

[[noreturn]] void __wrap__exit(int code) {
  __gcov_dump();
  __real__exit(code);
}

}  // extern "C"
