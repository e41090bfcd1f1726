#include "kit/values/AKValue.h"

#include <cmath>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include "kit/text/AKTextConversions.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValueArray.h"

const AKValue kAKNullValue;

namespace {

// floor(x + 0.5) as a 64-bit integer. What lies outside its range becomes the nearest end of it.
long long RoundedToInteger(double value) {
  const double rounded = std::floor(value + 0.5);
  if (std::isnan(rounded)) return 0;
  if (rounded >= 0x1p63) return std::numeric_limits<long long>::max();
  if (rounded < -0x1p63) return std::numeric_limits<long long>::min();
  return static_cast<long long>(rounded);
}

bool IsNotZero(double value) { return value != 0; }

// A text as an integer where it reads as one, else as a double that is narrowed; false when it is neither.
template <typename Result>
bool ReadText(const AKString& text, Result* value, Result (*narrowed)(double)) {
  long long integer = 0;
  if (strGetasSInt64(text.CStr(), &integer, 0)) {
    *value = static_cast<Result>(integer);
    return true;
  }
  double number = 0;
  if (!strGetasFloat64(text.CStr(), &number, 0)) return false;
  *value = narrowed(number);
  return true;
}

}  // namespace

AKValue::AKValue(const AKValue& other) : integer_(0) {
  switch (other.type_) {
    case kAKValueTypeBool:
      bool_ = other.bool_;
      break;
    case kAKValueTypeInteger:
      integer_ = other.integer_;
      break;
    case kAKValueTypeFloat:
      float_ = other.float_;
      break;
    case kAKValueTypeString:
      new (&string_) AKString(other.string_);
      break;
    case kAKValueTypeBinary:
      new (&binary_) AKMemoryBlock(other.binary_);
      break;
    case kAKValueTypeArray:
      array_ = new AKValueArray(*other.array_);
      break;
    case kAKValueTypeDictionary:
      dictionary_ = new AKDictionary(*other.dictionary_);
      break;
    default:
      return;
  }
  type_ = other.type_;
}

AKValue& AKValue::operator=(const AKValue& other) {
  AKValue copy(other);  // before the old content goes: `other` may be part of it
  Swap(&copy);
  return *this;
}

AKValue& AKValue::operator=(AKValue&& other) noexcept {
  AKValue taken(std::move(other));
  Swap(&taken);
  return *this;
}

void AKValue::Clear() {
  switch (std::exchange(type_, kAKValueTypeEmpty)) {
    case kAKValueTypeString:
      string_.~AKString();
      break;
    case kAKValueTypeBinary:
      binary_.~AKMemoryBlock();
      break;
    case kAKValueTypeArray:
      delete array_;
      break;
    case kAKValueTypeDictionary:
      delete dictionary_;
      break;
    default:
      break;
  }
  integer_ = 0;
}

// Every payload is a plain number or a handle that does not care where it lies, so the bytes can change places.
void AKValue::Swap(AKValue* other) noexcept {
  if (this == other) return;
  alignas(AKValue) unsigned char bytes[sizeof(AKValue)];
  std::memcpy(bytes, static_cast<void*>(this), sizeof(AKValue));
  std::memcpy(static_cast<void*>(this), static_cast<void*>(other), sizeof(AKValue));
  std::memcpy(static_cast<void*>(other), bytes, sizeof(AKValue));
}

bool AKValue::IsEqual(const AKValue& other) const {
  if (this == &other) return true;
  if (type_ != other.type_) return false;
  switch (type_) {
    case kAKValueTypeBool:
      return bool_ == other.bool_;
    case kAKValueTypeInteger:
      return integer_ == other.integer_;
    case kAKValueTypeFloat:
      return float_ == other.float_;
    case kAKValueTypeString:
      return string_ == other.string_;
    case kAKValueTypeBinary:
      return binary_ == other.binary_;
    case kAKValueTypeArray:
      return array_->IsEqual(*other.array_);
    case kAKValueTypeDictionary:
      return dictionary_->IsEqual(*other.dictionary_);
    default:
      return true;
  }
}

void AKValue::SetasBool(bool value) {
  Clear();
  bool_ = value;
  type_ = kAKValueTypeBool;
}

void AKValue::SetasInteger(long long value) {
  Clear();
  integer_ = value;
  type_ = kAKValueTypeInteger;
}

void AKValue::SetasFloat(double value) {
  Clear();
  float_ = value;
  type_ = kAKValueTypeFloat;
}

void AKValue::SetasAKString(const AKString& value) {
  AKString copy(value);  // `value` may be this value's own text, or lie inside its content
  Clear();
  new (&string_) AKString(std::move(copy));
  type_ = kAKValueTypeString;
}

void AKValue::SetasBinary(const AKMemoryBlock& value) {
  AKMemoryBlock copy(value);
  Clear();
  new (&binary_) AKMemoryBlock(std::move(copy));
  type_ = kAKValueTypeBinary;
}

void AKValue::SetasAKValueArray(const AKValueArray& value) { SetasAKValueArray(AKValueArray(value)); }

void AKValue::SetasAKValueArray(AKValueArray&& value) {
  auto* const content = new AKValueArray(std::move(value));
  Clear();
  array_ = content;
  type_ = kAKValueTypeArray;
}

void AKValue::SetasAKDictionary(const AKDictionary& value) { SetasAKDictionary(AKDictionary(value)); }

void AKValue::SetasAKDictionary(AKDictionary&& value) {
  auto* const content = new AKDictionary(std::move(value));
  Clear();
  dictionary_ = content;
  type_ = kAKValueTypeDictionary;
}

bool AKValue::GetasBool(bool* value, bool convert) const {
  if (type_ == kAKValueTypeBool) {
    *value = bool_;
    return true;
  }
  if (!convert) return false;
  if (type_ == kAKValueTypeInteger) {
    *value = integer_ != 0;
    return true;
  }
  if (type_ == kAKValueTypeFloat) {
    *value = float_ != 0;
    return true;
  }
  return type_ == kAKValueTypeString && ReadText(string_, value, &IsNotZero);
}

bool AKValue::GetasInteger(long long* value, bool convert) const {
  if (type_ == kAKValueTypeInteger) {
    *value = integer_;
    return true;
  }
  if (!convert) return false;
  if (type_ == kAKValueTypeBool) {
    *value = bool_ ? 1 : 0;
    return true;
  }
  if (type_ == kAKValueTypeFloat) {
    *value = RoundedToInteger(float_);
    return true;
  }
  return type_ == kAKValueTypeString && ReadText(string_, value, &RoundedToInteger);
}

bool AKValue::GetasFloat(double* value, bool convert) const {
  if (type_ == kAKValueTypeFloat) {
    *value = float_;
    return true;
  }
  if (!convert) return false;
  double number = 0;
  if (type_ == kAKValueTypeBool) {
    *value = bool_ ? 1.0 : 0.0;
  } else if (type_ == kAKValueTypeInteger) {
    *value = static_cast<double>(integer_);
  } else if (type_ == kAKValueTypeString && strGetasFloat64(string_.CStr(), &number, 0)) {
    *value = number;
  } else {
    return false;
  }
  return true;
}

bool AKValue::GetasAKString(AKString* value) const {
  if (type_ != kAKValueTypeString) return false;
  *value = string_;
  return true;
}

bool AKValue::GetasBinary(AKMemoryBlock* value) const {
  if (type_ != kAKValueTypeBinary) return false;
  *value = binary_;
  return true;
}

bool AKValue::GetasAKValueArray(AKValueArray* value) const {
  if (type_ != kAKValueTypeArray) return false;
  AKValueArray copy(*array_);  // `value` may contain this value
  value->Swap(&copy);
  return true;
}

bool AKValue::GetasAKDictionary(AKDictionary* value) const {
  if (type_ != kAKValueTypeDictionary) return false;
  *value = *dictionary_;
  return true;
}
