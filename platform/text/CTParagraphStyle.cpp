#include "CoreText/CTParagraphStyle.h"

#include "platform/text/CTParagraphStyleValue.h"

namespace {

template <typename Value>
void Take(const CTParagraphStyleSetting& setting, Value* value) {
  if (setting.value != nullptr && setting.valueSize == sizeof(Value))
    *value = *static_cast<const Value*>(setting.value);
}

}  // namespace

CTParagraphStyleRef CTParagraphStyleCreate(const CTParagraphStyleSetting* settings, size_t count) {
  auto* style = new CTParagraphStyle;
  for (size_t i = 0; settings != nullptr && i < count; ++i) {
    if (settings[i].specifier == kCTParagraphStyleSpecifierAlignment) Take(settings[i], &style->alignment);
    if (settings[i].specifier == kCTParagraphStyleSpecifierBaseWritingDirection) Take(settings[i], &style->direction);
  }
  return style;
}
