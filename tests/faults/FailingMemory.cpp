// Preloaded into a program: refuses the n-th allocation that it makes, once or from then on, and tells how many there
// were.
//
// FAIL_AT=N counts from 0; without it all succeed. FAIL_FOR_GOOD=1 refuses all from there on. FAIL_REPORT=FILE gets the
// count when the program ends. FAIL_TRACE=1 prints who asked for what was refused. FAIL_NEW=1 counts what C++ asks for
// alone, which can be told that there is none, and FAIL_AFTER_SIGNAL=1 begins with SIGUSR2. The programs that it starts
// are left alone.
#include <dlfcn.h>
#include <execinfo.h>
#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

std::atomic<long> sCount{0};
long sFailAt = -1;
bool sForGood = false;
bool sActive = false;
bool sTraces = false;
bool sOnlyNew = false;
char sReport[4096];

template <typename Function>
Function* Next(Function*, const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool Refuses() {
  if (!sActive) return false;
  const long number = sCount++;
  if (sFailAt < 0 || number < sFailAt || (number > sFailAt && !sForGood)) return false;
  if (sTraces) {
    sActive = false;
    void* callers[40];
    backtrace_symbols_fd(callers, backtrace(callers, 40), STDERR_FILENO);
    sActive = true;
  }
  errno = ENOMEM;
  return true;
}

bool RefusesC() { return !sOnlyNew && Refuses(); }

void Begin(int) { sActive = true; }

// What dlsym allocates while it looks for calloc.
char sEarly[4096];
std::size_t sEarlyUsed = 0;

bool IsEarly(const void* memory) { return memory >= sEarly && memory < sEarly + sizeof(sEarly); }

__attribute__((constructor)) void Start() {
  const char* at = std::getenv("FAIL_AT");
  const char* report = std::getenv("FAIL_REPORT");
  sFailAt = at == nullptr ? -1 : std::atol(at);
  sForGood = std::getenv("FAIL_FOR_GOOD") != nullptr;
  sTraces = std::getenv("FAIL_TRACE") != nullptr;
  if (report != nullptr) std::strncpy(sReport, report, sizeof(sReport) - 1);
  sOnlyNew = std::getenv("FAIL_NEW") != nullptr;
  const bool waits = std::getenv("FAIL_AFTER_SIGNAL") != nullptr;
  for (const char* name :
       {"LD_PRELOAD", "FAIL_AT", "FAIL_FOR_GOOD", "FAIL_REPORT", "FAIL_TRACE", "FAIL_NEW", "FAIL_AFTER_SIGNAL"}) {
    unsetenv(name);
  }
  if (waits) std::signal(SIGUSR2, &Begin);
  sActive = !waits && (at != nullptr || report != nullptr);
}

__attribute__((destructor)) void End() {
  sActive = false;
  if (sReport[0] == '\0') return;
  const int file = open(sReport, O_WRONLY | O_CREAT | O_TRUNC, 0600);
  if (file < 0) return;
  dprintf(file, "%ld\n", sCount.load());
  close(file);
}

}  // namespace

extern "C" {

void* malloc(std::size_t size) {
  static const auto next = Next(&malloc, "malloc");
  return RefusesC() ? nullptr : next(size);
}

void* calloc(std::size_t count, std::size_t size) {
  static bool searching = false;
  if (searching) {
    void* const memory = sEarly + sEarlyUsed;
    sEarlyUsed += (count * size + 15) & ~std::size_t{15};
    return memory;
  }
  searching = true;
  static const auto next = Next(&calloc, "calloc");
  searching = false;
  return RefusesC() ? nullptr : next(count, size);
}

void* realloc(void* memory, std::size_t size) {
  static const auto next = Next(&realloc, "realloc");
  return RefusesC() ? nullptr : next(memory, size);
}

void* aligned_alloc(std::size_t alignment, std::size_t size) {
  static const auto next = Next(&aligned_alloc, "aligned_alloc");
  return RefusesC() ? nullptr : next(alignment, size);
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) {
  static const auto next = Next(&posix_memalign, "posix_memalign");
  return RefusesC() ? ENOMEM : next(memory, alignment, size);
}

void free(void* memory) {
  static const auto next = Next(&free, "free");
  if (!IsEarly(memory)) next(memory);
}

}  // extern "C"

void* operator new(std::size_t size) {
  for (;;) {
    void* const memory = sOnlyNew && Refuses() ? nullptr : std::malloc(size);
    if (memory != nullptr) return memory;
    const std::new_handler handler = std::get_new_handler();
    if (handler == nullptr) throw std::bad_alloc();
    handler();
  }
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
