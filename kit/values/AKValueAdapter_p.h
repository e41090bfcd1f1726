// Helpers of the typed adapters: the second form of a setter and of a getter, made from the first, and arrays of
// elements that have adapters.
#pragma once

#include "kit/values/AKValue.h"
#include "kit/values/AKValueArray.h"

namespace adapter {

/// The value that `set(&value, content)` makes.
template <typename Content>
AKValue Made(void (*set)(AKValue*, const Content&), const Content& content) {
  AKValue value;
  set(&value, content);
  return value;
}

/// What `get(value, &content, convert)` finds, zero or empty on failure.
template <typename Content>
Content Found(bool (*get)(const AKValue&, Content*, bool), const AKValue& value, bool convert) {
  Content content{};
  get(value, &content, convert);
  return content;
}

template <typename Array, typename Element>
void SetArray(AKValue* value, const Array& content, void (*set)(AKValue*, const Element&)) {
  AKValueArray array(content.Count());
  for (unsigned int i = 0; i < content.Count(); ++i) set(&array[i], content[i]);
  value->SetasAKValueArray(std::move(array));
}

template <typename Array, typename Element>
bool GetArray(const AKValue& value, Array* content, bool convert, bool (*get)(const AKValue&, Element*, bool)) {
  const AKValueArray* const array = value.GetasAKValueArray();
  if (array == nullptr) return false;
  Array found;
  found.Resize(array->Count());
  for (unsigned int i = 0; i < array->Count(); ++i) {
    if (!get((*array)[i], &found[i], convert)) return false;
  }
  content->Swap(&found);
  return true;
}

}  // namespace adapter
