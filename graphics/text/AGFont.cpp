#include "graphics/text/AGFont.h"

#include <algorithm>
#include <cmath>

#include "CoreText/CTFont.h"
#include "graphics/native/AGGraphicsLowFont.h"
#include "graphics/native/AGGraphicsLowText.h"
#include "graphics/text/AGFontCache_p.h"

namespace {

constexpr unsigned int kNameChanged = 0x1;
constexpr unsigned int kSizeChanged = 0x2;
constexpr unsigned int kStyleChanged = 0x4;

// What the key of a style ends with. The underline is no matter of the native font.
constexpr const char* kStyleIDs[] = {"", " B", " I", " IB", "", " B", " I", " IB", " ?"};

}  // namespace

unsigned int AGFont::sFontOptions = 0;

AGFont::AGFont() { LowOutOfGlobalScopeFontsSmartHandler(1, this); }

AGFont::AGFont(const AKString& name, double size, AGFontStyle style)
    : computed_(false), name_(name), size_(size), style_(style) {
  LowOutOfGlobalScopeFontsSmartHandler(1, this);
  BindIfEager();
}

AGFont::AGFont(const AGFont& other) {
  CopyFrom(other);
  LowOutOfGlobalScopeFontsSmartHandler(1, this);
  BindIfEager();
}

AGFont::~AGFont() {
  LowOutOfGlobalScopeFontsSmartHandler(4, this);
  AGGraphicsLow::ReleaseNativeFont(native_);
}

void AGFont::Assign(const AGFont& other) {
  if (this == &other) return;
  CopyFrom(other);
  BindIfEager();
}

void AGFont::CopyFrom(const AGFont& other) {
  AGGraphicsLow::RetainNativeFont(other.native_);
  TakeNative(other.native_);
  computed_ = other.computed_;
  name_ = other.name_;
  size_ = other.size_;
  style_ = other.style_;
  lineHeight_ = other.lineHeight_;
}

void AGFont::Clear() {
  TakeNative(nullptr);
  computed_ = false;
  name_.Free();
  size_ = 0;
  style_ = kAGFontStyleRegular;
  lineHeight_ = -1;
}

bool AGFont::IsEqual(const AGFont& other) const {
  return this == &other || (name_ == other.name_ && size_ == other.size_ && style_ == other.style_);
}

void AGFont::SetName(const AKString& name) {
  if (name_ == name) return;
  name_ = name;
  LowInvalidateNative(kNameChanged, false);
}

void AGFont::SetName(const AKString& name, double size) {
  SetName(name);
  SetSize(size);
}

void AGFont::SetSize(double size) {
  if (size_ == size) return;
  size_ = size;
  LowInvalidateNative(kSizeChanged, false);
}

void AGFont::MulSize(double factor, bool round) {
  const double size = size_ * factor;
  SetSize(round ? std::floor(size + 0.5) : size);
}

void AGFont::SetStyle(AGFontStyle style) {
  if (style_ == style) return;
  style_ = style;
  LowInvalidateNative(kStyleChanged, false);
}

void AGFont::SetStyleBit(AGFontStyle bit, bool on) { SetStyle(on ? style_ | bit : style_ & ~bit); }

AGNativeFont* AGFont::NativeFont() const {
  if (!computed_) LowComputeNative();
  return native_;
}

bool AGFont::IsValid() const { return NativeFont() != nullptr && size_ > 0; }

double AGFont::GetAscent() const { return IsValid() ? CTFontGetAscent(native_) : 0; }

double AGFont::GetDescent() const { return IsValid() ? CTFontGetDescent(native_) : 0; }

double AGFont::GetLeading() const { return IsValid() ? CTFontGetLeading(native_) : 0; }

double AGFont::GetLineHeight() const {
  if (!IsValid()) return 0;
  if (!(lineHeight_ >= 0)) lineHeight_ = AGGraphicsLow::AGFontGetLineHeight(*this);
  return lineHeight_;
}

AGSize AGFont::GetTextExtent(const AKString& text) const {
  return AGGraphicsLow::AGFontGetUTextExtent(*this, text, AKUniChars());
}

AGSize AGFont::GetUTextExtent(const AKUniChars& text) const {
  return AGGraphicsLow::AGFontGetUTextExtent(*this, AKString(), text);
}

AKString AGFont::GetTextTruncated(const AKString& text, double maxWidth) const {
  const double width = GetTextExtent(text).width;
  const double limit = maxWidth > 0 ? maxWidth : 0;
  if (!(width > limit)) return text;
  const auto kept = static_cast<unsigned int>(text.Length() * std::clamp(limit / width, 0.0, 1.0));
  return kept > 2 ? text.SubString(0, kept) + "..." : AKString("...");
}

AGPoint AGFont::GetTextPosInBounds(const AGRect& bounds, int hAlign, int vAlign) const {
  AGPoint point;
  if (hAlign != 0) {
    point.x = hAlign < 0 ? bounds.x0 : bounds.x1;
  } else {
    point.x = std::floor(bounds.Center().x + 0.5);
  }
  if (vAlign != 0) {
    point.y = vAlign < 0 ? bounds.y0 + GetDescent() : bounds.y1 - GetAscent();
  } else {
    point.y = std::floor((bounds.y0 + bounds.y1) * 0.5 - (GetAscent() - GetDescent()) * 0.5 + 0.5);
  }
  return point;
}

void AGFont::BindIfEager() const {
  if (!computed_ && (sFontOptions & kOptionBindEagerly) != 0 && LowOutOfGlobalScopeFontsSmartHandler(0, nullptr)) {
    LowComputeNative();
  }
}

void AGFont::TakeNative(AGNativeFont* native) const {
  AGGraphicsLow::ReleaseNativeFont(native_);
  native_ = native;
}

AKString AGFont::CacheKey() const {
  if (style_ == kAGFontStyleRegular) return name_;
  return name_ + kStyleIDs[std::min<AGFontStyle>(style_, 8)];
}

void AGFont::LowComputeNative() const {
  computed_ = true;  // also when it fails, and while the default font is asked for
  if (name_.IsEmpty()) return;
  const bool shares = (sFontOptions & kOptionShare) != 0;
  if (shares) {
    AGNativeFont* cached = AGFontCache::Shared().Find(CacheKey());
    if (cached != nullptr) {
      TakeNative(AGGraphicsLow::NewNativeFontOfSize(cached, size_));
      return;
    }
  }
  TakeNative(AGGraphicsLow::NewNativeFont(name_, size_, style_, (sFontOptions & kOptionAcceptSubstitute) != 0));
  if (native_ == nullptr && (sFontOptions & kOptionFallBack) != 0 && this != &kAGFontDefault) {
    TakeNative(AGGraphicsLow::NewNativeFontOfSize(kAGFontDefault.NativeFont(), size_));
  }
  if (native_ != nullptr && shares) AGFontCache::Shared().Put(CacheKey(), native_);
}

void AGFont::LowInvalidateNative(unsigned int mask, bool noRebind) const {
  if (computed_) {
    if ((mask & (kNameChanged | kStyleChanged)) != 0) {
      computed_ = false;
    } else if ((mask & kSizeChanged) != 0 && native_ != nullptr) {
      TakeNative(AGGraphicsLow::NewNativeFontOfSize(native_, size_));
    }
  }
  if ((mask & (kNameChanged | kSizeChanged)) != 0) lineHeight_ = -1;
  if (!computed_) TakeNative(nullptr);
  if (!noRebind) BindIfEager();
}
