// New objects for those who ask.
#pragma once

#include <cstdarg>
#include <string>

#include "kit/AKClassBasicTypes.h"
#include "torture/Puppet.h"

namespace torture {

inline AKObject* NewWithArgs(AKClassID id, const char* format, ...) __attribute__((format(printf, 2, 3)));
inline AKObject* NewWithArgs(AKClassID id, const char* format, ...) {
  va_list list;
  va_start(list, format);
  AKObject* object = AKClass::NewObjectWithArgs(nullptr, id, format, list);
  va_end(list);
  return object;
}

/// A puppet of the caller's; null, and a finding, when the host makes none.
Puppet* NewPuppet(double number);
/// Gives a puppet back. What the host does not end is a finding.
void Delete(AKObject* object);

}  // namespace torture
