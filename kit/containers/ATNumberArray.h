// Arrays of numbers and of plain structures of numbers.
#pragma once

#include <type_traits>

#include "kit/containers/ATArray.h"

/// An array of T, each made of one or several numbers of type Component (an array of points has T = AGPoint and
/// Component = double). `flags` only tells array types apart; it changes no behaviour.
template <typename T, typename Component, unsigned int flags = 0>
class ATNumberArray : public ATArray<T> {
  static_assert(std::is_trivially_copyable_v<T>);
  static_assert(sizeof(T) % sizeof(Component) == 0);

 public:
  /// The numbers that an element is made of.
  using component_type = Component;
  using ATArray<T>::ATArray;
};

/// UTF-16 text as code units without a terminator.
using AKUniChars = ATNumberArray<unsigned short, unsigned short, 0>;
