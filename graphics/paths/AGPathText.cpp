#include "graphics/native/AGGraphicsLowText.h"
#include "graphics/paths/AGPath.h"

void AGPath::AddText(const AKString& text, const AGFont& font, const AGPoint& position, AGTextAlignment alignment) {
  AGGraphicsLow::AGPathAddUText(this, font, text, AKUniChars(), position, alignment);
}

void AGPath::AddUText(const AKUniChars& text, const AGFont& font, const AGPoint& position, AGTextAlignment alignment) {
  AGGraphicsLow::AGPathAddUText(this, font, AKString(), text, position, alignment);
}
