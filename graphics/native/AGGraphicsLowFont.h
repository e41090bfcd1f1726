// Native fonts as AGFont uses them. Null natives are allowed everywhere.
#pragma once

#include "graphics/text/AGFont.h"

namespace AGGraphicsLow {

/// A new native font of the family and style at a size, which the caller releases. Null when there is none or, unless
/// substitutes are accepted, when the one that was found is of another family.
AGNativeFont* NewNativeFont(const AKString& name, double size, AGFontStyle style, bool acceptSubstitute);
/// The same face at another size; the caller releases it.
AGNativeFont* NewNativeFontOfSize(AGNativeFont* native, double size);
void RetainNativeFont(AGNativeFont* native);
void ReleaseNativeFont(AGNativeFont* native);

/// The families of all installed fonts, in no order, some more than once.
AKStringArray InstalledFamilies();

}  // namespace AGGraphicsLow
