// Paths in values: a "strg" of the path's text.
#include "kit/files/AKFilePath.h"
#include "kit/values/AKValue.h"

void AKFilePath::WriteToValue(AKValue* value) const { value->SetasAKString(text_); }

bool AKFilePath::ReadFromValue(const AKValue& value) { return value.GetasAKString(&text_); }
