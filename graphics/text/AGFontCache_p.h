// Native fonts that AGFonts of one name and style share. Private to AGFont.
#pragma once

#include "graphics/text/AGFont.h"
#include "kit/containers/ATFastMap.h"

/// Holds one reference to each native font.
class AGFontCache {
 public:
  /// The process's one.
  static AGFontCache& Shared();

  ~AGFontCache() { Empty(); }

  /// Null when there is none; the reference stays the cache's.
  AGNativeFont* Find(const AKString& key) const;
  /// Keeps a reference of its own, in place of the key's former font.
  void Put(const AKString& key, AGNativeFont* native);
  void Empty();

 private:
  ATFastMap<AKString, AGNativeFont*> fonts_;
};
