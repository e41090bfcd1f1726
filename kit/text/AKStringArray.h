// AKStringArray: an ordered, growable list of strings. Copying it copies the handles; the texts are shared.
#pragma once

#include "kit/containers/ATArray.h"
#include "kit/text/AKString.h"

class AKStringArray : public ATArray<AKString> {
 public:
  using ATArray<AKString>::ATArray;

  /// The strings of a list that ends at its first null entry; a null list gives an empty array.
  AKStringArray& AssignWithCStrings(const char* const* list);
  /// The first `count` entries, null ones as empty strings; a null list gives an empty array.
  AKStringArray& AssignWithCStrings(const char* const* list, unsigned int count);

  /// The elements joined as by AKString::BuildFromArray.
  AKString ConcatToString(const AKString& separator) const;

  ///@{
  /// The AKString operation on every element.
  AKStringArray& ToUpperCase();
  AKStringArray& ToLowerCase();
  AKStringArray& ToCapitalized();
  ///@}
};
