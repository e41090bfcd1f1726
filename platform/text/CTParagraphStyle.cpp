#include "CoreText/CTParagraphStyle.h"

#include "platform/text/CTParagraphStyleValue.h"

CTParagraphStyleRef CTParagraphStyleCreate(const CTParagraphStyleSetting* settings, size_t count) {
  auto* style = new CTParagraphStyle;
  for (size_t i = 0; settings != nullptr && i < count; ++i) {
    const CTParagraphStyleSetting& setting = settings[i];
    if (setting.specifier != kCTParagraphStyleSpecifierAlignment || setting.valueSize != sizeof(CTTextAlignment) ||
        setting.value == nullptr) {
      continue;
    }
    style->alignment = *static_cast<const CTTextAlignment*>(setting.value);
  }
  return style;
}
