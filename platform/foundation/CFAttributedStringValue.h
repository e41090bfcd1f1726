// What attributed text is made of. Private to the native layer.
#pragma once

#include <cstddef>

#include "CoreFoundation/CFAttributedString.h"
#include "platform/foundation/CFStringValue.h"
#include "platform/foundation/NativeObject.h"
#include "platform/foundation/NativeRef.h"

struct CFAttributedString final : platform::NativeObject {
  /// There are no more names of attributes than this.
  static constexpr std::size_t kMaxAttributes = 8;

  struct Attribute {
    platform::NativeRef<const CFString> name;
    platform::NativeRef<const platform::NativeObject> value;
  };

  explicit CFAttributedString(CFStringRef attributedText) : text(attributedText) {}

  /// Null when it is not set.
  const platform::NativeObject* Find(CFStringRef name) const;
  void Set(CFStringRef name, const platform::NativeObject* value);

  /// The attribute as a T; null when it is not set or of another type.
  template <typename T>
  const T* Get(CFStringRef name) const {
    return dynamic_cast<const T*>(Find(name));
  }

  const platform::NativeRef<const CFString> text;
  Attribute attributes[kMaxAttributes];
  std::size_t attributeCount = 0;
};
