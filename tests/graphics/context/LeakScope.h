// Lets a test draw what the library below leaks.
#pragma once

// There when the leak sanitizer is.
extern "C" __attribute__((weak)) void __lsan_disable();
extern "C" __attribute__((weak)) void __lsan_enable();

/// While it lives, nothing that is allocated counts as leaked: cairo 1.16 never drops recordings that a page in SVG was
/// painted with, nor what belongs to them.
class LeakScope {
 public:
  LeakScope() {
    if (__lsan_disable != nullptr) __lsan_disable();
  }
  LeakScope(const LeakScope&) = delete;
  LeakScope& operator=(const LeakScope&) = delete;
  ~LeakScope() {
    if (__lsan_enable != nullptr) __lsan_enable();
  }
};
