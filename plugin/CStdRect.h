// The rectangle with rounded corners.
//
// The host owns instances and calls their methods through the slots of the class record. The rectangle's only state of
// its own is the curvature of its corners: 0 is square, 1 the fullest rounding. Statuses are 0 for success.
#pragma once

#include "graphics/context/AKDrawEvent.h"
#include "kit/AKClassBasicTypes.h"

class AKArgs;
class AKDictionary;
class AKFile;

/// The property of the curvature, "Rounding".
extern const AKString kKey_Rounding;
/// From (0, 0) to (1, 1).
inline constexpr AGRect kNatBounds{0, 0, 1, 1};

class CStdRect final : public AKObjectClass<CStdRect, AKObjectSymbolVect> {
 public:
  /// Bytes of an instance, as registered with the host.
  static constexpr unsigned int kInstanceSize = 360;

  static constexpr char kClassID[] = "stdRect";
  static constexpr char kClassName[] = "CStdRect";
  static constexpr char kLocaleDomain[] = "StdRectangle";
  static const char* DisplayName() { return NKLocaleGetString("Rectangle"); }

  /// The inspector panel: a label, a number field and a slider. The caller owns it until the host takes it.
  static AKGUIDesc* BuildInspectorGUIDesc();

  /// "-default" gives a curvature of 0.5.
  int akmInitWithArgs(const AKArgs& args);
  /// Reads the 16-byte record: the curvature as a 32-bit float, unclamped, and 12 reserved bytes.
  int akmInitFromFile(const AKFile& file, unsigned int version);
  int akmWriteToFile(AKFile& file) const;
  int akmDelete();

  /// "Rounding" is clamped to 0..1; a missing or unreadable one changes nothing.
  int akmSetObjectProperties(const AKDictionary& properties);
  int akmGetObjectProperties(AKDictionary* properties) const;

  /// Draws the rectangle into the event's bounds, turned by its angle about their centre.
  int akmDraw(const AGContext& context, const AKDrawEvent& event) const;
  AGRect akmGetNaturalBounds() const;
  /// Fills the panel from the curvature, or takes the curvature from the control that was changed.
  int akmInspector(AKGUIDesc& panel, AKGUIEvent& event);

 private:
  double curvature_ = 0;
};
