// The locale guards that keep the decimal separator of stored text a dot.
//
// Both are meant for the one thread that the host calls from.
#pragma once

#include <clocale>

// Some systems declare locale_t and what works with it here, and others have no such header.
#if __has_include(<xlocale.h>)
#include <xlocale.h>
#endif

/// Copies `src`, cut at 63 characters, into `dest` (64 bytes); null gives an empty text. When the process' numbers had
/// a decimal comma at the first call of this function, every "." becomes a ",": the copy is for the C library's
/// scanner. Returns `dest`.
char* strPrepareFloatScanf(char* dest, const char* src);

/// Whether that first call, which this function makes when nobody has, found a decimal comma.
bool AKIsDecimalComma();

/// While it lives, the calling thread's numbers are written and read by the C library with a dot. Scopes nest.
///
/// It also sets the decimal point of the record that localeconv returns, and puts the old one back. Changing the record
/// alone does not reach printf, so the thread gets a locale of its own whose numbers are those of the C locale.
class AKScopedPrintfFloatSepAsDot {
 public:
  /// From here on the thread's numbers have a dot.
  AKScopedPrintfFloatSepAsDot();
  AKScopedPrintfFloatSepAsDot(const AKScopedPrintfFloatSepAsDot&) = delete;
  AKScopedPrintfFloatSepAsDot& operator=(const AKScopedPrintfFloatSepAsDot&) = delete;
  /// Numbers are as they were before.
  ~AKScopedPrintfFloatSepAsDot();

 private:
  lconv* record_;
  char* keptDecimalPoint_;
  locale_t dotLocale_;
  locale_t previousLocale_ = nullptr;
};
