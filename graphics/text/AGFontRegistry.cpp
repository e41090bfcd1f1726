// What fonts share in a process: options, the cache, the list of names, and the fonts made before the initialisation.
#include <algorithm>

#include "graphics/native/AGGraphicsLowFont.h"
#include "graphics/text/AGFont.h"
#include "graphics/text/AGFontCache_p.h"

namespace {

struct Registry {
  ATArray<const AGFont*> fonts;
  bool initialized = false;
};

// Made by the first font, so that it outlives every font that is static.
Registry& FontRegistry() {
  static Registry registry;
  return registry;
}

AKStringArray& FontNames() {
  static AKStringArray names;
  return names;
}

void Register(Registry& registry, const AGFont* font) {
  constexpr unsigned int kUsualCount = 30;
  if (registry.initialized) return;
  if (registry.fonts.IsEmpty()) registry.fonts.Reserve(kUsualCount);
  registry.fonts.Append(font);
}

// Fonts mostly die in the reverse order of their making.
void Forget(Registry& registry, const AGFont* font) {
  for (unsigned int i = registry.fonts.Count(); i-- > 0;) {
    if (registry.fonts[i] != font) continue;
    std::copy(registry.fonts.begin() + i + 1, registry.fonts.end(), registry.fonts.begin() + i);
    registry.fonts.RemoveLast();
    return;
  }
}

}  // namespace

const AGFont kAGFontDefault("Lucida Grande", 24, kAGFontStyleRegular);
const AGFont kAGFontDefaultMini("Lucida Grande", 12, kAGFontStyleRegular);
const AGFont kAGNullFont;

bool AGFont::LowOutOfGlobalScopeFontsSmartHandler(int command, const AGFont* font) {
  Registry& registry = FontRegistry();
  if (command == 1) {
    Register(registry, font);
  } else if (command == 2 && !registry.initialized) {
    kAGFontDefault.NativeFont();
    for (const AGFont* registered : registry.fonts) registered->NativeFont();
    registry.initialized = true;
  } else if (command == 3 && registry.initialized) {
    for (unsigned int i = registry.fonts.Count(); i-- > 0;) registry.fonts[i]->LowInvalidateNative(0xFF, true);
    // After a second initialisation these are in no registry any more.
    kAGFontDefaultMini.LowInvalidateNative(0xFF, true);
    kAGFontDefault.LowInvalidateNative(0xFF, true);
    registry.fonts.Free();
    registry.initialized = false;
  } else if (command == 4) {
    Forget(registry, font);
  }
  return registry.initialized;
}

void AGFont::SetOption(unsigned int option, bool on) {
  sFontOptions = on ? sFontOptions | option : sFontOptions & ~option;
}

void AGFont::LowInitialize(unsigned int options) {
  sFontOptions = options & 0xFF;
  LowOutOfGlobalScopeFontsSmartHandler(2, nullptr);
}

void AGFont::LowTerminate() {
  AGFontCache::Shared().Empty();
  LowOutOfGlobalScopeFontsSmartHandler(3, nullptr);
  sFontOptions = 0;
  FontNames().Free();
}

const AKStringArray& AGFont::GetFontNameList() {
  AKStringArray& names = FontNames();
  if (!names.IsEmpty()) return names;
  AKStringArray all = AGGraphicsLow::InstalledFamilies();
  std::sort(all.begin(), all.end());
  const auto count = static_cast<unsigned int>(std::unique(all.begin(), all.end()) - all.begin());
  names.Assign(all.Data(), count);  // exactly the room that it needs
  return names;
}
