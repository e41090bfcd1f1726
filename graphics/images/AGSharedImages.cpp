#include "graphics/images/AGSharedImages.h"

#include "graphics/native/AGGraphicsLowImageFile.h"
#include "kit/files/AKFileUtils.h"
#include "kit/files/AKFileUtilsMacOS.h"
#include "kit/streams/AKFileErrors.h"

namespace {

constexpr unsigned int kReservedCount = 80;

CGImage* LoadResource(const AKString& name) {
  const AKFilePath path = AKFileUtilsMacOS::GetApplicationBundleResourceFilePath(name);
  return AKFileUtils::Exists(path) ? AGGraphicsLow::LoadImageFile(path) : nullptr;
}

}  // namespace

AGSharedImages& AGSharedImages::Shared() {
  // Never destroyed: images with static storage may outlive whatever is made after them.
  static AGSharedImages* const images = new AGSharedImages;
  return *images;
}

CGImage* AGSharedImages::RegisterImage(const AKString& name) {
  if (AGImageRec* found = images_.Find(name)) {
    ++found->count;
    return found->native;
  }
  CGImage* native = LoadResource(name);
  if (native == nullptr) {
    AKLogError(kAKFileStatusResourceMissing, "Can't find resource \"%s\"", name.CStr());
    return nullptr;
  }
  if (images_.IsEmpty()) images_.Reserve(kReservedCount);
  images_[name] = {native, 1};
  return native;
}

void AGSharedImages::UnregisterImage(const AKString& name) {
  AGImageRec* found = images_.Find(name);
  if (found == nullptr) return;
  const bool isLast = found->count <= 1;
  if (found->count > 0) --found->count;
  if (!isLast || (AGImage::Options() & AGImage::kOptionKeepShared) != 0) return;
  AGGraphicsLow::DeleteCountedImage(found->native);
  images_.Remove(name);
}

void AGSharedImages::DeleteAllImages() {
  for (auto& [name, record] : images_) AGGraphicsLow::DeleteCountedImage(record.native);
  images_.Free();
}
