// AKValue: a tagged value. Empty, a boolean, a 64-bit integer, a double, a text, a block of bytes, an array of values
// or a dictionary.
//
// The value owns its content. Copying copies arrays and dictionaries deeply; texts and blocks share their buffers. A
// value may be assigned from its own inside. Getters report failure by their result and never log.
#pragma once

#include <cstdint>

#include "kit/containers/AKMemoryBlock.h"
#include "kit/text/AKString.h"

class AKDictionary;
class AKFile;
class AKValueArray;

/// The kinds of a value: four-character codes.
using AKValueType = std::uint32_t;
inline constexpr AKValueType kAKValueTypeEmpty = 0;                ///< nothing
inline constexpr AKValueType kAKValueTypeBool = 0x626F6F6C;        ///< "bool"
inline constexpr AKValueType kAKValueTypeInteger = 0x696E7467;     ///< "intg", 64 bits with a sign
inline constexpr AKValueType kAKValueTypeFloat = 0x7265616C;       ///< "real", a double
inline constexpr AKValueType kAKValueTypeString = 0x73747267;      ///< "strg", a text
inline constexpr AKValueType kAKValueTypeBinary = 0x62696E61;      ///< "bina", a block of bytes
inline constexpr AKValueType kAKValueTypeArray = 0x61727279;       ///< "arry", values in an order
inline constexpr AKValueType kAKValueTypeDictionary = 0x64696374;  ///< "dict", values by keys

class AKValue {
 public:
  /// The empty value.
  constexpr AKValue() noexcept : integer_(0) {}
  ///@{
  /// A deep copy; or the other's content, which is empty then.
  AKValue(const AKValue& other);
  AKValue(AKValue&& other) noexcept : integer_(0) { Swap(&other); }
  ///@}
  /// Frees the content, however deep it nests.
  ~AKValue() {
    if (type_ != kAKValueTypeEmpty) Clear();
  }
  ///@{
  /// As copying and moving do.
  AKValue& operator=(const AKValue& other);
  AKValue& operator=(AKValue&& other) noexcept;
  ///@}

  /// As the assignment of a copy.
  void Assign(const AKValue& other) { *this = other; }
  /// Back to empty.
  void Clear();
  /// Exchanges two values; nothing is copied.
  void Swap(AKValue* other) noexcept;

  /// The kind of the content.
  AKValueType Type() const { return type_; }
  /// True without content. An empty text is content.
  bool IsEmpty() const { return type_ == kAKValueTypeEmpty; }
  ///@{
  /// The same type and the same content; doubles compare as numbers, so a NaN equals nothing but itself as an object.
  bool IsEqual(const AKValue& other) const;
  bool operator==(const AKValue& other) const { return IsEqual(other); }
  ///@}

  ///@{
  /// Replaces the content by a copy, of the kind in the name, which may be part of this value.
  void SetasBool(bool value);
  void SetasInteger(long long value);
  void SetasFloat(double value);
  void SetasAKString(const AKString& value);
  void SetasBinary(const AKMemoryBlock& value);
  void SetasAKValueArray(const AKValueArray& value);
  void SetasAKDictionary(const AKDictionary& value);
  ///@}
  ///@{
  /// The same with content that the caller gives up.
  void SetasAKValueArray(AKValueArray&& value);
  void SetasAKDictionary(AKDictionary&& value);
  ///@}

  ///@{
  /// With `convert` the scalar kinds and texts that read as numbers convert into each other: a double to an integer as
  /// floor(x + 0.5), limited to the integer's range (a NaN to 0). False, with the output left alone, when there is no
  /// such value.
  bool GetasBool(bool* value, bool convert) const;
  bool GetasInteger(long long* value, bool convert) const;
  bool GetasFloat(double* value, bool convert) const;
  ///@}
  ///@{
  /// A copy of the content, only from the same type. False, with the output left alone, from another.
  bool GetasAKString(AKString* value) const;
  bool GetasBinary(AKMemoryBlock* value) const;
  bool GetasAKValueArray(AKValueArray* value) const;
  bool GetasAKDictionary(AKDictionary* value) const;
  ///@}

  ///@{
  /// The content itself, null when the type differs; valid until the value changes its type or dies.
  const AKString* GetasAKString() const { return type_ == kAKValueTypeString ? &string_ : nullptr; }
  AKString* GetasAKString() { return type_ == kAKValueTypeString ? &string_ : nullptr; }
  const AKMemoryBlock* GetasBinary() const { return type_ == kAKValueTypeBinary ? &binary_ : nullptr; }
  AKMemoryBlock* GetasBinary() { return type_ == kAKValueTypeBinary ? &binary_ : nullptr; }
  const AKValueArray* GetasAKValueArray() const { return type_ == kAKValueTypeArray ? array_ : nullptr; }
  AKValueArray* GetasAKValueArray() { return type_ == kAKValueTypeArray ? array_ : nullptr; }
  const AKDictionary* GetasAKDictionary() const { return type_ == kAKValueTypeDictionary ? dictionary_ : nullptr; }
  AKDictionary* GetasAKDictionary() { return type_ == kAKValueTypeDictionary ? dictionary_ : nullptr; }
  ///@}

  ///@{
  /// The value's record; a failed read leaves the value empty.
  int ReadFromFile(const AKFile& file);
  int WriteToFile(AKFile& file) const;
  ///@}

 private:
  friend struct AKLayout;

  AKValueType type_ = kAKValueTypeEmpty;
  union {
    bool bool_;
    long long integer_;
    double float_;
    AKString string_;
    AKMemoryBlock binary_;
    AKValueArray* array_;
    AKDictionary* dictionary_;
  };
};

/// The shared empty value, which lookups return when nothing is found. It is known by its content.
extern const AKValue kAKNullValue;
