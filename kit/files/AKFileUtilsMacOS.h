// AKFileUtilsMacOS: where the application keeps its resources.
#pragma once

#include "kit/files/AKFilePath.h"

class AKFileUtilsMacOS {
 public:
  /// The path of a resource of the running application: in the folder "Resources" beside the executable, else, when the
  /// file is there, in "share/NAME" of the prefix that the executable NAME is installed under. Nothing needs to exist
  /// at the returned path. A name that climbs out of the folder is not refused; it is the application's own.
  static AKFilePath GetApplicationBundleResourceFilePath(const AKString& name);
};
