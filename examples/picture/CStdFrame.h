// A frame to lie over a picture: what is between the bounds and a smaller rectangle in them.
#pragma once

#include "graphics/context/AKDrawEvent.h"
#include "kit/AKClassBasicTypes.h"

class AKArgs;
class AKDictionary;
class AKFile;

class CStdFrame final : public AKObjectClass<CStdFrame, AKObjectSymbolVect> {
 public:
  static constexpr char kClassID[] = "stdFram";
  static constexpr char kClassName[] = "CStdFrame";
  static constexpr char kLocaleDomain[] = "StdPicture";
  static const char* DisplayName() { return NKLocaleGetString("Picture Frame"); }

  /// The caller owns the panel.
  static AKGUIDesc* BuildInspectorGUIDesc();

  /// "-width:W"; what is missing or makes no sense stays as it is.
  int akmInitWithArgs(const AKArgs& args);
  /// The record: f32 width, 12 reserved bytes.
  int akmInitFromFile(const AKFile& file, unsigned int version);
  int akmWriteToFile(AKFile& file) const;

  /// "Width", 0 to 1: 1 fills the bounds.
  int akmSetObjectProperties(const AKDictionary& properties);
  int akmGetObjectProperties(AKDictionary* properties) const;

  int akmDraw(const AGContext& context, const AKDrawEvent& event) const;
  AGRect akmGetNaturalBounds() const { return {0, 0, 4, 3}; }
  int akmInspector(AKGUIDesc& panel, AKGUIEvent& event);

 private:
  void SetWidth(double width);

  float width_ = 0.2F;  // of half the shorter side; as wide as in the record, so that nothing changes by saving
};
