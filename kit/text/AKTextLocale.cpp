#include "kit/text/AKTextLocale.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace {

constexpr std::size_t kScanLength = 63;

bool sTested = false;
bool sDecimalComma = false;

char sDot[] = ".";

/// A copy of the thread's locale with the numbers of the C locale; null when the system has none to give.
locale_t NewDotLocale() {
  const locale_t copy = duplocale(uselocale(nullptr));
  if (copy == nullptr) return nullptr;
  const locale_t dotted = newlocale(LC_NUMERIC_MASK, "C", copy);
  if (dotted == nullptr) freelocale(copy);
  return dotted;
}

}  // namespace

bool AKIsDecimalComma() {
  if (!sTested) {
    char text[32];
    std::snprintf(text, sizeof(text), "%lf", 1.5);
    sDecimalComma = text[1] == ',';
    sTested = true;
  }
  return sDecimalComma;
}

char* strPrepareFloatScanf(char* dest, const char* src) {
  const bool comma = AKIsDecimalComma();
  const std::size_t length = src == nullptr ? 0 : strnlen(src, kScanLength);
  if (length != 0) std::memcpy(dest, src, length);
  dest[length] = '\0';
  if (comma) std::replace(dest, dest + length, '.', ',');
  return dest;
}

AKScopedPrintfFloatSepAsDot::AKScopedPrintfFloatSepAsDot()
    : record_(localeconv()), keptDecimalPoint_(record_->decimal_point), dotLocale_(NewDotLocale()) {
  record_->decimal_point = sDot;
  if (dotLocale_ != nullptr) previousLocale_ = uselocale(dotLocale_);
}

AKScopedPrintfFloatSepAsDot::~AKScopedPrintfFloatSepAsDot() {
  if (dotLocale_ != nullptr) {
    uselocale(previousLocale_);
    freelocale(dotLocale_);
  }
  if (keptDecimalPoint_ != nullptr) record_->decimal_point = keptDecimalPoint_;
}
