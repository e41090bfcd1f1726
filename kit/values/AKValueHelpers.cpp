#include "kit/values/AKValueHelpers.h"

#include <utility>

#include "kit/values/AKValueAdapter_p.h"

namespace {

template <typename Number>
bool GetNarrowed(const AKValue& value, Number* content, bool convert) {
  long long number = 0;
  if (!value.GetasInteger(&number, convert)) return false;
  *content = static_cast<Number>(number);
  return true;
}

// The value of a hexadecimal digit of either case, or -1.
int DigitOf(char byte) {
  if (byte >= '0' && byte <= '9') return byte - '0';
  if (byte >= 'A' && byte <= 'F') return byte - 'A' + 10;
  if (byte >= 'a' && byte <= 'f') return byte - 'a' + 10;
  return -1;
}

// Four digits from `digits`.
bool ReadUnit(const char* digits, unsigned short* unit) {
  unsigned int number = 0;
  for (int i = 0; i < 4; ++i) {
    const int digit = DigitOf(digits[i]);
    if (digit < 0) return false;
    number = number * 16 + static_cast<unsigned int>(digit);
  }
  *unit = static_cast<unsigned short>(number);
  return true;
}

}  // namespace

void AKValueSetasBool(AKValue* value, bool content) { value->SetasBool(content); }
AKValue AKValueSetasBool(bool content) {
  AKValue value;
  value.SetasBool(content);
  return value;
}
bool AKValueGetasBool(const AKValue& value, bool* content, bool convert) { return value.GetasBool(content, convert); }
bool AKValueGetasBool(const AKValue& value, bool convert) {
  return adapter::Found<bool>(AKValueGetasBool, value, convert);
}

void AKValueSetasSInt(AKValue* value, long long content) { value->SetasInteger(content); }
AKValue AKValueSetasSInt(long long content) {
  AKValue value;
  AKValueSetasSInt(&value, content);
  return value;
}
bool AKValueGetasSInt(const AKValue& value, signed char* content, bool convert) {
  return GetNarrowed(value, content, convert);
}
bool AKValueGetasSInt(const AKValue& value, short* content, bool convert) {
  return GetNarrowed(value, content, convert);
}
bool AKValueGetasSInt(const AKValue& value, int* content, bool convert) { return GetNarrowed(value, content, convert); }
bool AKValueGetasSInt(const AKValue& value, long long* content, bool convert) {
  return GetNarrowed(value, content, convert);
}
long long AKValueGetasSInt(const AKValue& value, bool convert) {
  return adapter::Found<long long>(AKValueGetasSInt, value, convert);
}

void AKValueSetasUInt(AKValue* value, unsigned long long content) {
  value->SetasInteger(static_cast<long long>(content));
}
AKValue AKValueSetasUInt(unsigned long long content) {
  AKValue value;
  AKValueSetasUInt(&value, content);
  return value;
}
bool AKValueGetasUInt(const AKValue& value, unsigned char* content, bool convert) {
  return GetNarrowed(value, content, convert);
}
bool AKValueGetasUInt(const AKValue& value, unsigned short* content, bool convert) {
  return GetNarrowed(value, content, convert);
}
bool AKValueGetasUInt(const AKValue& value, unsigned int* content, bool convert) {
  return GetNarrowed(value, content, convert);
}
bool AKValueGetasUInt(const AKValue& value, unsigned long long* content, bool convert) {
  return GetNarrowed(value, content, convert);
}
unsigned long long AKValueGetasUInt(const AKValue& value, bool convert) {
  return adapter::Found<unsigned long long>(AKValueGetasUInt, value, convert);
}

void AKValueSetasFloat32(AKValue* value, float content) { value->SetasFloat(content); }
AKValue AKValueSetasFloat32(float content) { return AKValueSetasFloat64(content); }
bool AKValueGetasFloat32(const AKValue& value, float* content, bool convert) {
  double number = 0;
  if (!value.GetasFloat(&number, convert)) return false;
  *content = static_cast<float>(number);
  return true;
}
float AKValueGetasFloat32(const AKValue& value, bool convert) {
  return adapter::Found<float>(AKValueGetasFloat32, value, convert);
}

void AKValueSetasFloat64(AKValue* value, double content) { value->SetasFloat(content); }
AKValue AKValueSetasFloat64(double content) {
  AKValue value;
  value.SetasFloat(content);
  return value;
}
bool AKValueGetasFloat64(const AKValue& value, double* content, bool convert) {
  return value.GetasFloat(content, convert);
}
double AKValueGetasFloat64(const AKValue& value, bool convert) {
  return adapter::Found<double>(AKValueGetasFloat64, value, convert);
}

void AKValueSetasAKString(AKValue* value, const AKString& content) { value->SetasAKString(content); }
AKValue AKValueSetasAKString(const AKString& content) { return adapter::Made<AKString>(AKValueSetasAKString, content); }
bool AKValueGetasAKString(const AKValue& value, AKString* content, bool) { return value.GetasAKString(content); }
AKString AKValueGetasAKString(const AKValue& value, bool convert) {
  return adapter::Found<AKString>(AKValueGetasAKString, value, convert);
}

void AKValueSetasAKValueArray(AKValue* value, const AKValueArray& content) { value->SetasAKValueArray(content); }
AKValue AKValueSetasAKValueArray(const AKValueArray& content) {
  return adapter::Made<AKValueArray>(AKValueSetasAKValueArray, content);
}
bool AKValueGetasAKValueArray(const AKValue& value, AKValueArray* content, bool) {
  return value.GetasAKValueArray(content);
}
AKValueArray AKValueGetasAKValueArray(const AKValue& value, bool convert) {
  return adapter::Found<AKValueArray>(AKValueGetasAKValueArray, value, convert);
}

void AKValueSetasAKDictionary(AKValue* value, const AKDictionary& content) { value->SetasAKDictionary(content); }
AKValue AKValueSetasAKDictionary(const AKDictionary& content) {
  return adapter::Made<AKDictionary>(AKValueSetasAKDictionary, content);
}
bool AKValueGetasAKDictionary(const AKValue& value, AKDictionary* content, bool) {
  return value.GetasAKDictionary(content);
}
AKDictionary AKValueGetasAKDictionary(const AKValue& value, bool convert) {
  return adapter::Found<AKDictionary>(AKValueGetasAKDictionary, value, convert);
}

void AKValueSetasBinary(AKValue* value, const AKMemoryBlock& content) { value->SetasBinary(content); }
AKValue AKValueSetasBinary(const AKMemoryBlock& content) {
  return adapter::Made<AKMemoryBlock>(AKValueSetasBinary, content);
}
bool AKValueGetasBinary(const AKValue& value, AKMemoryBlock* content, bool) { return value.GetasBinary(content); }
AKMemoryBlock AKValueGetasBinary(const AKValue& value, bool convert) {
  return adapter::Found<AKMemoryBlock>(AKValueGetasBinary, value, convert);
}

void AKValueSetasAKFilePath(AKValue* value, const AKFilePath& content) { content.WriteToValue(value); }
AKValue AKValueSetasAKFilePath(const AKFilePath& content) {
  return adapter::Made<AKFilePath>(AKValueSetasAKFilePath, content);
}
bool AKValueGetasAKFilePath(const AKValue& value, AKFilePath* content, bool) { return content->ReadFromValue(value); }
AKFilePath AKValueGetasAKFilePath(const AKValue& value, bool convert) {
  return adapter::Found<AKFilePath>(AKValueGetasAKFilePath, value, convert);
}

void AKValueSetasAKUniChars(AKValue* value, const AKUniChars& content) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  AKString text;
  for (unsigned int i = 0; i < content.Count(); ++i) {
    if (i > 0) text.Append(';');
    for (int shift = 12; shift >= 0; shift -= 4) text.Append(kDigits[content[i] >> shift & 15]);
  }
  value->SetasAKString(text);
}
AKValue AKValueSetasAKUniChars(const AKUniChars& content) {
  return adapter::Made<AKUniChars>(AKValueSetasAKUniChars, content);
}
bool AKValueGetasAKUniChars(const AKValue& value, AKUniChars* content, bool) {
  const AKString* const text = value.GetasAKString();
  if (text == nullptr) return false;
  const unsigned int length = text->Length();
  if (length != 0 && length % 5 != 4) return false;
  AKUniChars units((length + 1) / 5);
  for (unsigned int i = 0; i < units.Count(); ++i) {
    if (i > 0 && (*text)[5 * i - 1] != ';') return false;
    if (!ReadUnit(text->CStr() + 5 * std::size_t{i}, &units[i])) return false;
  }
  content->Swap(&units);
  return true;
}
AKUniChars AKValueGetasAKUniChars(const AKValue& value, bool convert) {
  return adapter::Found<AKUniChars>(AKValueGetasAKUniChars, value, convert);
}

void AKValueSetasAKStringArray(AKValue* value, const AKStringArray& content) {
  adapter::SetArray<AKStringArray, AKString>(value, content, AKValueSetasAKString);
}
AKValue AKValueSetasAKStringArray(const AKStringArray& content) {
  return adapter::Made<AKStringArray>(AKValueSetasAKStringArray, content);
}
bool AKValueGetasAKStringArray(const AKValue& value, AKStringArray* content, bool convert) {
  return adapter::GetArray<AKStringArray, AKString>(value, content, convert, AKValueGetasAKString);
}
AKStringArray AKValueGetasAKStringArray(const AKValue& value, bool convert) {
  return adapter::Found<AKStringArray>(AKValueGetasAKStringArray, value, convert);
}

void AKValueSetasAKFilePathArray(AKValue* value, const AKFilePathArray& content) {
  adapter::SetArray<AKFilePathArray, AKFilePath>(value, content, AKValueSetasAKFilePath);
}
AKValue AKValueSetasAKFilePathArray(const AKFilePathArray& content) {
  return adapter::Made<AKFilePathArray>(AKValueSetasAKFilePathArray, content);
}
bool AKValueGetasAKFilePathArray(const AKValue& value, AKFilePathArray* content, bool convert) {
  return adapter::GetArray<AKFilePathArray, AKFilePath>(value, content, convert, AKValueGetasAKFilePath);
}
AKFilePathArray AKValueGetasAKFilePathArray(const AKValue& value, bool convert) {
  return adapter::Found<AKFilePathArray>(AKValueGetasAKFilePathArray, value, convert);
}
