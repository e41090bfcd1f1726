#pragma once
#include <CoreFoundation/CFBase.h>
#include <stddef.h>
typedef const struct __CTParagraphStyle* CTParagraphStyleRef;
enum CTTextAlignment : uint8_t { kCTTextAlignmentLeft = 0, kCTTextAlignmentRight = 1, kCTTextAlignmentCenter = 2 };
enum CTParagraphStyleSpecifier : uint32_t { kCTParagraphStyleSpecifierAlignment = 0 };
typedef struct CTParagraphStyleSetting {
  CTParagraphStyleSpecifier specifier;
  size_t valueSize;
  const void* value;
} CTParagraphStyleSetting;
CF_EXPORT CTParagraphStyleRef CTParagraphStyleCreate(const CTParagraphStyleSetting* settings, size_t settingCount);
