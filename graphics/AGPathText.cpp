#include "graphics/AGPath.h"
#include "graphics/native/AGGraphicsLowText.h"

void AGPath::AddText(const AKString& text, const AGFont& font, const AGPoint& position, AGTextAlignment alignment) {
  AGGraphicsLow::AGPathAddUText(this, font, text, AKUniChars(), position, alignment);
}

void AGPath::AddUText(const AKUniChars& text, const AGFont& font, const AGPoint& position, AGTextAlignment alignment) {
  AGGraphicsLow::AGPathAddUText(this, font, AKString(), text, position, alignment);
}
