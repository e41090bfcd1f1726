// What a location is made of. Private to the native layer.
#pragma once

#include <string>

#include "CoreFoundation/CFURL.h"
#include "platform/foundation/CFStringValue.h"
#include "platform/foundation/NativeObject.h"
#include "platform/foundation/NativeRef.h"

struct CFURL final : platform::NativeObject {
  CFURL(CFStringRef locationPath, std::string locationSystemPath, bool locationIsDirectory)
      : path(locationPath), systemPath(std::move(locationSystemPath)), isDirectory(locationIsDirectory) {}

  const platform::NativeRef<const CFString> path;
  const std::string systemPath;  ///< UTF-8, as system calls take it
  const bool isDirectory;
};
