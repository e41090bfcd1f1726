// What fonts share in a process: options, the cache, the list of names, and the fonts made before the initialisation.
#include <algorithm>
#include <unordered_map>

#include "graphics/native/AGGraphicsLowFont.h"
#include "graphics/text/AGFont.h"
#include "graphics/text/AGFontCache_p.h"

namespace {

struct Registry {
  ATArray<const AGFont*> fonts;  // in the order of their making; null where one died
  std::unordered_map<const AGFont*, unsigned int> places;
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
  registry.places[font] = registry.fonts.Count();
  registry.fonts.Append(font);
}

// Closes the gaps. It takes no memory: fonts die when a program ends for want of it, too.
void Compact(Registry& registry) {
  unsigned int living = 0;
  for (unsigned int i = 0; i < registry.fonts.Count(); ++i) {
    const AGFont* const font = registry.fonts[i];
    if (font == nullptr) continue;
    registry.places.find(font)->second = living;
    registry.fonts[living++] = font;
  }
  while (registry.fonts.Count() > living) registry.fonts.RemoveLast();
}

void Forget(Registry& registry, const AGFont* font) {
  const auto found = registry.places.find(font);
  if (found == registry.places.end()) return;
  registry.fonts[found->second] = nullptr;
  registry.places.erase(found);
  if (registry.places.size() * 2 < registry.fonts.Count()) Compact(registry);
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
    for (const AGFont* registered : registry.fonts) {
      if (registered != nullptr) registered->NativeFont();
    }
    registry.initialized = true;
  } else if (command == 3 && registry.initialized) {
    for (unsigned int i = registry.fonts.Count(); i-- > 0;) {
      if (registry.fonts[i] != nullptr) registry.fonts[i]->LowInvalidateNative(0xFF, true);
    }
    // After a second initialisation these are in no registry any more.
    kAGFontDefaultMini.LowInvalidateNative(0xFF, true);
    kAGFontDefault.LowInvalidateNative(0xFF, true);
    registry.fonts.Free();
    registry.places.clear();
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
