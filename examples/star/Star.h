// A star: points on an ellipse that fills the bounds, and between them points nearer to the centre.
#pragma once

#include "graphics/context/AKDrawEvent.h"
#include "kit/AKClassBasicTypes.h"

class AKArgs;
class AKDictionary;
class AKFile;

class Star final : public AKObjectClass<Star, AKObjectSymbolVect> {
 public:
  static constexpr unsigned int kFewestPoints = 3;
  static constexpr unsigned int kMostPoints = 64;

  static constexpr char kClassID[] = "exStar";
  static constexpr char kClassName[] = "Star";
  static constexpr char kLocaleDomain[] = "Star";
  static const char* DisplayName() { return NKLocaleGetString("Star"); }

  /// The caller owns the panel.
  static AKGUIDesc* BuildInspectorGUIDesc();

  /// "-points:N" and "-inner:R"; what is missing or makes no sense stays as it is.
  int akmInitWithArgs(const AKArgs& args);
  /// The record: u32 number of points, f32 inner radius, 8 reserved bytes.
  int akmInitFromFile(const AKFile& file, unsigned int version);
  int akmWriteToFile(AKFile& file) const;
  int akmDelete() { return 0; }

  /// "Points", 3 to 64, and "InnerRadius", 0 to 1.
  int akmSetObjectProperties(const AKDictionary& properties);
  int akmGetObjectProperties(AKDictionary* properties) const;

  int akmDraw(const AGContext& context, const AKDrawEvent& event) const;
  AGRect akmGetNaturalBounds() const { return {0, 0, 1, 1}; }
  int akmInspector(AKGUIDesc& panel, AKGUIEvent& event);

 private:
  void SetPoints(double points);
  void SetInnerRadius(double radius);
  void ShowIn(AKGUIDesc& panel) const;

  unsigned int points_ = 5;
  double innerRadius_ = 0.4;  // as a part of the outer one
};
