#include <algorithm>
#include <charconv>
#include <climits>
#include <cstdio>
#include <cstring>

#include "kit/os/AKNumberText_p.h"
#include "kit/text/AKTextLocale.h"
#include "kit/text/AKTextScanner_p.h"

namespace aktext {
namespace {

bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

const char* SkipDigits(const char* p, const char* end) { return std::find_if_not(p, end, IsDigit); }

/// The calling thread in the C locale, as long as it lives.
class CLocaleScope {
 public:
  CLocaleScope() : locale_(newlocale(LC_ALL_MASK, "C", nullptr)) {
    if (locale_ != nullptr) previous_ = uselocale(locale_);
  }
  CLocaleScope(const CLocaleScope&) = delete;
  CLocaleScope& operator=(const CLocaleScope&) = delete;
  ~CLocaleScope() {
    if (locale_ == nullptr) return;
    uselocale(previous_);
    freelocale(locale_);
  }

 private:
  locale_t locale_;
  locale_t previous_ = nullptr;
};

int ScanFloat(const char* text, float* value, int* used) { return std::sscanf(text, "%f%n", value, used); }
int ScanFloat(const char* text, double* value, int* used) { return std::sscanf(text, "%lf%n", value, used); }

}  // namespace

ScanText::ScanText(const char* text) : begin_(text), end_(text) {
  if (text == nullptr) return;
  const std::size_t length = strnlen(text, sizeof(buffer_) - 1);
  end_ = text + length;
  if (!AKIsDecimalComma()) return;
  // Where numbers have a decimal comma the scanner takes dots and commas alike.
  std::replace_copy(begin_, end_, buffer_, ',', '.');
  begin_ = buffer_;
  end_ = buffer_ + length;
}

bool Scanner::Literal(char c) {
  if (position_ == end_ || *position_ != c) return false;
  ++position_;
  return true;
}

void Scanner::SkipSpace() { position_ = std::find_if_not(position_, end_, IsSpace); }

bool Scanner::Sign() {
  const bool negative = Literal('-');
  if (!negative) Literal('+');
  return negative;
}

bool Scanner::Digits(unsigned long* magnitude, bool* overflow) {
  const char* const stop = SkipDigits(position_, end_);
  const auto result = std::from_chars(position_, stop, *magnitude);
  *overflow = result.ec == std::errc::result_out_of_range;
  const bool any = stop != position_;
  position_ = stop;
  return any;
}

bool Scanner::Long(long* value) {
  SkipSpace();
  const bool negative = Sign();
  unsigned long magnitude = 0;
  bool overflow = false;
  if (!Digits(&magnitude, &overflow)) return false;
  constexpr unsigned long kMax = LONG_MAX;
  if (overflow || magnitude > kMax) {
    *value = negative ? LONG_MIN : LONG_MAX;
  } else {
    *value = negative ? -static_cast<long>(magnitude) : static_cast<long>(magnitude);
  }
  return true;
}

bool Scanner::Int(int* value) {
  long number = 0;
  if (!Long(&number)) return false;
  *value = static_cast<int>(number);
  return true;
}

bool Scanner::Unsigned(unsigned int* value) {
  SkipSpace();
  const bool negative = Sign();
  unsigned long magnitude = 0;
  bool overflow = false;
  if (!Digits(&magnitude, &overflow)) return false;
  if (overflow) {
    magnitude = ULONG_MAX;
  } else if (negative) {
    magnitude = 0 - magnitude;
  }
  *value = static_cast<unsigned int>(magnitude);
  return true;
}

// The end of a plain decimal number at `p`, or null when it is none or one that scanf reads in its own way: hexadecimal
// digits, words such as "inf", an exponent without digits.
const char* Scanner::PlainDecimalEnd(const char* p) const {
  if (p != end_ && *p == '-') ++p;
  const char* const start = p;
  p = SkipDigits(p, end_);
  auto digits = p - start;
  if (p != end_ && (*p == 'x' || *p == 'X')) return nullptr;
  if (p != end_ && *p == '.') {
    const char* const fraction = p + 1;
    p = SkipDigits(fraction, end_);
    digits += p - fraction;
  }
  if (digits == 0) return nullptr;
  if (p == end_ || (*p != 'e' && *p != 'E')) return p;
  ++p;
  if (p != end_ && (*p == '-' || *p == '+')) ++p;
  return p != end_ && IsDigit(*p) ? SkipDigits(p, end_) : nullptr;
}

template <typename T>
bool Scanner::FloatOf(T* value) {
  SkipSpace();
  if (position_ == end_) return false;
  const char* start = position_;
  if (end_ - start >= 2 && start[0] == '+' && start[1] != '-') ++start;
  const char* const stop = PlainDecimalEnd(start);
  if (stop == nullptr) return SlowFloat(value);
  if (!AKReadDecimal(start, stop, value)) return SlowFloat(value);
  position_ = stop;
  return true;
}

template <typename T>
bool Scanner::SlowFloat(T* value) {
  char text[64];
  const std::size_t length = std::min<std::size_t>(static_cast<std::size_t>(end_ - position_), sizeof(text) - 1);
  std::memcpy(text, position_, length);
  text[length] = '\0';
  const CLocaleScope scope;
  int used = 0;
  if (ScanFloat(text, value, &used) != 1) return false;
  position_ += used;
  return true;
}

template bool Scanner::FloatOf(float*);
template bool Scanner::FloatOf(double*);

}  // namespace aktext
