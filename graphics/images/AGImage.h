// A picture that does not change, held as a native image.
//
// An image either owns its native image (a snapshot of a bitmap, a file's, a copy of another image's) or shares one
// that AGSharedImages holds under the name of a resource. Width and height are pixels; row 0 is on top. Files are JPEG,
// PNG or TIFF; pixels are taken as a file stores them, whatever orientation it asks for. Of a file with several images
// the first counts. Failures are results; only a resource that is missing and a file of more pixels than MaxBytes
// allows (status -881) are logged.
//
// Counters, options and the shared images belong to this copy of the kit, and are used by one thread.
#pragma once

#include <cstddef>
#include <cstdint>

#include "graphics/images/AGImageQuality.h"
#include "kit/text/AKString.h"

struct CGImage;
class AGBitmapBase;
class AKFilePath;

/// The kinds of files that images are written to.
enum class AGImageFileFormat : std::uint32_t {
  kNone = 0,  ///< no file is written
  kJPEG = 1,  ///< small, with losses
  kPNG = 2,   ///< without losses
  kTIFF = 3,  ///< without losses
};

class AGImage {
 public:
  /// There is no image.
  static constexpr std::uint32_t kKindEmpty = 0;
  /// The native image is this image's alone.
  static constexpr std::uint32_t kKindOwned = 1;
  /// It is a resource's, shared by name.
  static constexpr std::uint32_t kKindShared = 2;

  /// An option: shared images stay loaded when nobody uses them any more.
  static constexpr unsigned int kOptionKeepShared = 0x100;

  /// An empty image.
  AGImage() = default;
  /// As Assign.
  AGImage(const AGImage& other) { Assign(other); }
  /// As SetupFromBitmap.
  explicit AGImage(const AGBitmapBase& bitmap) { SetupFromBitmap(bitmap); }
  /// As Assign.
  AGImage& operator=(const AGImage& other) {
    Assign(other);
    return *this;
  }
  /// Releases what the image owns or shares.
  ~AGImage() { Clear(); }

  /// Shares what `other` shares, or owns a copy of what it owns.
  void Assign(const AGImage& other);
  /// A snapshot of the bitmap; false, and an empty image, when there is none.
  bool SetupFromBitmap(const AGBitmapBase& bitmap);
  /// The first image of a file; false, and an empty image, when it cannot be read or is damaged.
  bool SetupFromFile(const AKFilePath& path);
  /// Shares the image of a resource of the application. False, and an empty image, for an empty name and, logged, for a
  /// resource that is missing or no image.
  bool SetupFromResources(const AKString& name);
  /// Writes the image to a file, whole or not at all; no alpha is written, what is translucent is mixed with white.
  /// `quality`, for JPEG only, is brought into 0 to 1; `highResolution` tags the file with 144 dots an inch. False,
  /// with the old file as it was, for an empty image, an empty path, another format, and when it cannot be written.
  bool SaveToFile(const AKFilePath& path, AGImageFileFormat format, double quality, bool highResolution) const;
  /// The empty image again.
  void Clear();

  /// True when there are no pixels.
  bool IsEmpty() const { return native_ == nullptr; }
  /// kKindEmpty, kKindOwned or kKindShared.
  std::uint32_t Kind() const { return kind_; }
  ///@{
  /// In pixels; 0 for an empty image.
  std::uint32_t Width() const { return width_; }
  std::uint32_t Height() const { return height_; }
  ///@}
  /// Empty unless the image shares a resource.
  const AKString& ResourceName() const { return name_; }
  /// Null for an empty image; not the caller's.
  CGImage* NativeImage() const { return native_; }

  ///@{
  /// Native images alive, owned or shared, and their pixels' bytes (width × height × 4 each).
  static unsigned int GetImageGlobalCount();
  static unsigned long long GetImageGlobalBytes();
  ///@}
  /// Names of resources that are loaded.
  static unsigned int GetImageGlobalSharedCount();

  ///@{
  /// The most bytes of pixels (width × height × 4) that an image of a file may have to be read: 256 MB (of 2^20) until
  /// a program sets another number. It is the process's: a host's number holds for its plug-ins, and the other way.
  static unsigned long long MaxBytes();
  static void SetMaxBytes(unsigned long long bytes);
  ///@}

  ///@{
  /// The options, a sum of kOptionKeepShared; SetOption changes the bits that it names.
  static void SetOption(unsigned int option, bool on);
  static unsigned int Options();
  ///@}
  /// Takes the options from the second byte alone; the first belongs to others.
  static void LowInitialize(unsigned int options);
  /// Deletes the shared images, which no image may be using any more, and clears the options.
  static void LowTerminate();

 private:
  friend struct AGLayout;

  /// Takes over a counted native image, which may be null.
  bool Own(CGImage* native);
  void ReadSize();

  CGImage* native_ = nullptr;
  std::uint32_t kind_ = kKindEmpty;
  std::uint32_t width_ = 0;
  std::uint32_t height_ = 0;
  AKString name_;
};
