#include "host/Fonts.h"

#include "graphics/text/AGFont.h"

namespace host {

Fonts::Fonts() {
  AGFont::LowInitialize(AGFont::kOptionShare | AGFont::kOptionFallBack | AGFont::kOptionAcceptSubstitute);
}

Fonts::~Fonts() { AGFont::LowTerminate(); }

}  // namespace host
