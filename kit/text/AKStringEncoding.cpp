#include "kit/text/AKStringEncoding.h"

#include "kit/text/AKCharacterSets_p.h"

namespace {

bool IsKnown(AKStringEncoding encoding) {
  return encoding >= kAKStringEncodingMacRoman && encoding <= kAKStringEncodingUTF8;
}

}  // namespace

void AKStringConvertWithEncoding(AKString* text, AKStringEncoding from, AKStringEncoding to) {
  if (text == nullptr || text->IsEmpty() || from == to || (!IsKnown(from) && !IsKnown(to))) return;
  if (!IsKnown(from) || !IsKnown(to)) {
    text->Free();
    return;
  }
  if (akcharset::AsciiPrefix(text->CStr(), text->Length()) == text->Length()) return;
  if (!akcharset::ConvertBytes(text->CStr(), text->Length(), from, to, text)) text->Free();
}

AKString AKStringCopyWithEncoding(const AKString& text, AKStringEncoding from, AKStringEncoding to) {
  AKString copy(text);
  AKStringConvertWithEncoding(&copy, from, to);
  return copy;
}
