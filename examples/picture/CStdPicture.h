// A picture: the bytes of a PNG, JPEG or TIFF file, drawn into the bounds.
//
// The bytes are kept as they came, so that nothing is lost by saving. What can't be decoded, and what has more pixels
// than AGImage::MaxBytes allows, is drawn as a crossed box; its bytes stay.
//
// A host makes one of a file by the arguments "-file:PATH", or of bytes that it has by
// AKClass::NewObjectFromDictionary with a binary value "Data".
#pragma once

#include "graphics/context/AKDrawEvent.h"
#include "kit/AKClassBasicTypes.h"
#include "kit/containers/AKMemoryBlock.h"

class AKArgs;
class AKDictionary;
class AKFile;

class CStdPicture final : public AKObjectClass<CStdPicture, AKObjectSymbolVect> {
 public:
  static constexpr char kClassID[] = "stdPict";
  static constexpr char kClassName[] = "CStdPicture";
  static constexpr char kLocaleDomain[] = "StdPicture";
  static const char* DisplayName() { return NKLocaleGetString("Picture"); }

  /// How the image lies in the bounds.
  enum Fit : unsigned int {
    kWhole = 0,    ///< as large as fits, in its own proportions
    kStretch = 1,  ///< over all of the bounds
  };

  ~CStdPicture() override;

  /// The caller owns the panel.
  static AKGUIDesc* BuildInspectorGUIDesc();

  /// "-default" shows the sample that is compiled in, "-file:PATH" the image of a file: a status, logged, when it can't
  /// be read or is no image. "-stretch" and "-coarse" as the properties.
  int akmInitWithArgs(const AKArgs& args);
  /// The record: u32 fit, u32 smooth, the block of the bytes, 16 reserved bytes.
  int akmInitFromFile(const AKFile& file, unsigned int version);
  int akmWriteToFile(AKFile& file) const;
  /// Frees the pixels.
  int akmDelete();

  /// "Fit" ("Whole" or "Stretch"), "Smooth", and "Data", bytes of an image file or none, which is set and not given, so
  /// that lists stay short; "Format" ("PNG", "JPEG", "TIFF", "") and "Bytes", the number of them, are given alone.
  int akmSetObjectProperties(const AKDictionary& properties);
  int akmGetObjectProperties(AKDictionary* properties) const;

  /// The image where there is a brush, and the pen around it.
  int akmDraw(const AGContext& context, const AKDrawEvent& event) const;
  /// The size in pixels; {0, 0, 1, 1} without an image.
  AGRect akmGetNaturalBounds() const;
  int akmInspector(AKGUIDesc& panel, AKGUIEvent& event);

 private:
  void SetData(const AKMemoryBlock& data);
  const AGImage& Image() const;
  AGRect PlaceOf(const AGImage& image, const AGRect& bounds) const;

  void ShowIn(AKGUIDesc& panel) const;
  const char* TakeFrom(const AKGUIDesc& panel, unsigned int control);
  void ChooseFile();
  void SaveCopy() const;

  unsigned int fit_ = kWhole;
  bool smooth_ = true;
  AKMemoryBlock data_;
};
