// AKValueArray: an ordered list of values, which it owns. Copying copies the values deeply.
#pragma once

#include "kit/containers/ATArray.h"
#include "kit/values/AKValue.h"

class AKFile;

class AKValueArray : public ATArray<AKValue> {
 public:
  using ATArray<AKValue>::ATArray;

  /// The same number of equal values in the same order.
  bool IsEqual(const AKValueArray& other) const { return *this == other; }

  ///@{
  /// The "arry" record; a failed read leaves the array empty.
  int ReadFromFile(const AKFile& file);
  int WriteToFile(AKFile& file) const;
  ///@}
};
