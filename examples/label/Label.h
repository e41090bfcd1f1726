// A text label: lines of text in any script, as large as fits into the bounds, on a sheet of paper.
//
// It shows what the star does not: text and fonts, text that crosses from the host, a panel with a line of text, menus,
// check boxes, a colour and buttons, and a handler that adds an object to the document.
#pragma once

#include "graphics/context/AKDrawEvent.h"
#include "kit/AKClassBasicTypes.h"

class AKArgs;
class AKDictionary;
class AKFile;

class Label final : public AKObjectClass<Label, AKObjectSymbolVect> {
 public:
  static constexpr char kClassID[] = "exLabel";
  static constexpr char kClassName[] = "Label";
  static constexpr char kLocaleDomain[] = "Label";
  static const char* DisplayName() { return NKLocaleGetString("Label"); }

  /// Longer texts are cut, in bytes.
  static constexpr unsigned int kLongestText = 2000;
  static constexpr unsigned int kLongestFontName = 100;

  /// The caller owns the panel.
  static AKGUIDesc* BuildInspectorGUIDesc();

  /// "-text:T", "-font:F", "-bold", "-italic", "-align:Left" (Center, Right), "-paper:RRGGBBAA".
  int akmInitWithArgs(const AKArgs& args);
  /// The record: u32 style, u32 alignment, the paper's colour, string font, string text, 16 reserved bytes.
  int akmInitFromFile(const AKFile& file, unsigned int version);
  int akmWriteToFile(AKFile& file) const;
  int akmDelete() { return 0; }

  /// "Text", "Font", "Bold", "Italic", "Alignment" (a word as above) and "Paper".
  int akmSetObjectProperties(const AKDictionary& properties);
  int akmGetObjectProperties(AKDictionary* properties) const;

  int akmDraw(const AGContext& context, const AKDrawEvent& event) const;
  AGRect akmGetNaturalBounds() const { return {0, 0, 120, 40}; }
  int akmInspector(AKGUIDesc& panel, AKGUIEvent& event);

 private:
  void SetText(const AKString& text);
  void SetFontName(const AKString& name);
  void SetStyleBit(AGFontStyle bit, bool on) { style_ = on ? style_ | bit : style_ & ~bit; }
  void DrawText(const AGContext& context, const AGRect& bounds, const AGAffineTransform& turn) const;

  void ShowIn(AKGUIDesc& panel) const;
  const char* TakeFrom(const AKGUIDesc& panel, unsigned int control);
  void MakeUpperCase();
  void AddCopy();

  AKString text_ = "Label";
  AKString fontName_ = "DejaVu Sans";
  AGFontStyle style_ = kAGFontStyleRegular;
  AGTextAlignment alignment_ = kAGTextAlignmentCenter;
  AGColor paper_ = kAGNullColor;
};
