#include "kit/values/AKValueClassID.h"

#include <cstring>

bool AKValueGetasAKClassID(const AKValue& value, AKClassID* id) {
  const AKString* const text = value.GetasAKString();
  if (text == nullptr) return false;
  *id = AKClassID(text->CStr());
  return true;
}

AKClassID AKValueGetasAKClassID(const AKValue& value) {
  AKClassID id = kAKNullClassID;
  AKValueGetasAKClassID(value, &id);
  return id;
}

void AKValueSetasAKClassID(AKValue* value, AKClassID id) {
  value->SetasAKString(AKString(id.chars, static_cast<unsigned int>(::strnlen(id.chars, sizeof(id.chars)))));
}

AKValue AKValueSetasAKClassID(AKClassID id) {
  AKValue value;
  AKValueSetasAKClassID(&value, id);
  return value;
}
