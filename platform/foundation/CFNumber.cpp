#include "CoreFoundation/CFNumber.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

#include "platform/foundation/CFNumberValue.h"
#include "platform/foundation/NotNull.h"

namespace {

template <typename T>
T Load(const void* address) {
  T value;
  std::memcpy(&value, address, sizeof(value));
  return value;
}

template <typename T>
bool StoreInteger(const CFNumber& number, void* address) {
  T value = 0;
  bool exact = true;
  if (number.isInteger) {
    if (!std::in_range<T>(number.integer)) return false;
    value = static_cast<T>(number.integer);
  } else {
    // The bound itself is a power of two, which a double holds exactly.
    const double bound = -static_cast<double>(std::numeric_limits<T>::min());
    const double whole = std::trunc(number.real);
    if (!(whole >= -bound && whole < bound)) return false;
    value = static_cast<T>(whole);
    exact = whole == number.real;
  }
  std::memcpy(address, &value, sizeof(value));
  return exact;
}

template <typename T>
bool StoreReal(const CFNumber& number, void* address) {
  const double limit = std::numeric_limits<T>::max();
  if (std::isfinite(number.real) && std::fabs(number.real) > limit) return false;
  const T value = static_cast<T>(number.real);
  std::memcpy(address, &value, sizeof(value));
  return std::isnan(number.real) || static_cast<double>(value) == number.real;
}

}  // namespace

CFNumberRef CFNumberCreate(CFAllocatorRef, CFNumberType type, const void* value) {
  platform::MustBeThere(value);
  if (value == nullptr) return nullptr;
  switch (type) {
    case kCFNumberSInt32Type:
      return new CFNumber(std::int64_t{Load<std::int32_t>(value)});
    case kCFNumberSInt64Type:
      return new CFNumber(Load<std::int64_t>(value));
    case kCFNumberFloat32Type:
      return new CFNumber(double{Load<float>(value)});
    case kCFNumberFloat64Type:
      return new CFNumber(Load<double>(value));
  }
  return nullptr;
}

Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* value) {
  platform::MustBeThere(number);
  if (number == nullptr || value == nullptr) return false;
  switch (type) {
    case kCFNumberSInt32Type:
      return StoreInteger<std::int32_t>(*number, value);
    case kCFNumberSInt64Type:
      return StoreInteger<std::int64_t>(*number, value);
    case kCFNumberFloat32Type:
      return StoreReal<float>(*number, value);
    case kCFNumberFloat64Type:
      return StoreReal<double>(*number, value);
  }
  return false;
}

const CFBooleanRef kCFBooleanTrue = new CFBoolean(true);
const CFBooleanRef kCFBooleanFalse = new CFBoolean(false);

Boolean CFBooleanGetValue(CFBooleanRef boolean) {
  platform::MustBeThere(boolean);
  return boolean != nullptr && boolean->value;
}
