#include "graphics/native/AGGraphicsLowFont.h"
#include "graphics/text/AGFontCache_p.h"

AGFontCache& AGFontCache::Shared() {
  static AGFontCache cache;
  return cache;
}

AGNativeFont* AGFontCache::Find(const AKString& key) const {
  AGNativeFont* const* found = fonts_.Find(key);
  return found == nullptr ? nullptr : *found;
}

void AGFontCache::Put(const AKString& key, AGNativeFont* native) {
  constexpr unsigned int kUsualCount = 80;
  if (fonts_.IsEmpty()) fonts_.Reserve(kUsualCount);
  AGNativeFont*& kept = fonts_[key];
  AGGraphicsLow::RetainNativeFont(native);
  AGGraphicsLow::ReleaseNativeFont(kept);
  kept = native;
}

void AGFontCache::Empty() {
  for (const auto& [key, native] : fonts_) AGGraphicsLow::ReleaseNativeFont(native);
  fonts_.Free();
}
