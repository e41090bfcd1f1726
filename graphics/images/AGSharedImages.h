// The images that are loaded by name from the application's resources, each once, with a count of who uses it.
//
// Native images that are handed out stay this class's: who registered a name unregisters it again. There is one
// instance to each copy of the kit. It goes with the process and does not delete what is left then: LowTerminate of
// AGImage does.
#pragma once

#include "kit/containers/ATFastMap.h"
#include "kit/text/AKString.h"

struct CGImage;

class AGSharedImages {
 public:
  /// What is kept of a name.
  struct AGImageRec {
    CGImage* native = nullptr;  ///< this class's
    unsigned int count = 0;     ///< who uses it
  };

  /// The one instance of this copy of the kit.
  static AGSharedImages& Shared();

  /// The image of the name, loaded if it is not yet; its count rises by one. Null, logged (-895), when there is none.
  CGImage* RegisterImage(const AKString& name);
  /// Lowers the count; at 0 the image is deleted, unless AGImage's option keeps it. An unknown name does nothing.
  void UnregisterImage(const AKString& name);
  /// Deletes all of them, which nobody may be using any more.
  void DeleteAllImages();

  /// The number of names that are loaded.
  unsigned int Count() const { return images_.Count(); }

 private:
  ATFastMap<AKString, AGImageRec> images_;
};
