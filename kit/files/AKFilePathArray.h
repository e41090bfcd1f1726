// AKFilePathArray: an ordered, growable list of file paths.
#pragma once

#include "kit/containers/ATArray.h"
#include "kit/files/AKFilePath.h"

class AKFilePathArray : public ATArray<AKFilePath> {
 public:
  using ATArray<AKFilePath>::ATArray;

  /// Sorts by AKFilePath's order.
  void Sort();
};
