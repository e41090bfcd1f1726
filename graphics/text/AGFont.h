// AGFont: a font by family name, size and style, bound to a native font when it is first needed.
//
// Sizes are points, of which one is one unit of the space that text is drawn in. A font owns a reference to its native
// font; copies share it. Native fonts are shared in the process through a cache by name and style. Fonts that exist
// before LowInitialize, such as static ones, are bound by it and unbound by LowTerminate.
//
// Nothing fails with a status: a font that can't be bound is not valid, its measures are 0, and text in it is not
// drawn. Until a program calls LowInitialize no option is set, and only families that are installed give valid fonts.
// Everything here runs on the host's thread; const members bind and fill caches too.
#pragma once

#include <cstdint>

#include "kit/containers/ATNumberArray.h"
#include "kit/geometry/AGPoint.h"
#include "kit/geometry/AGRect.h"
#include "kit/geometry/AGSize.h"
#include "kit/text/AKString.h"
#include "kit/text/AKStringArray.h"

struct __CTFont;
/// A font of the native layer.
using AGNativeFont = const __CTFont;

/// A sum of the bits below.
using AGFontStyle = std::uint32_t;
inline constexpr AGFontStyle kAGFontStyleRegular = 0;      ///< neither of the others
inline constexpr AGFontStyle kAGFontStyleBold = 0x1;       ///< a bold face
inline constexpr AGFontStyle kAGFontStyleItalic = 0x2;     ///< an italic or slanted face
inline constexpr AGFontStyle kAGFontStyleUnderline = 0x4;  ///< a line below the text

class AGFont {
 public:
  /// Native fonts of the same name and style are shared through the cache.
  static constexpr unsigned int kOptionShare = 0x1;
  /// A font is bound as soon as it is made or changed, once the kit is initialised.
  static constexpr unsigned int kOptionBindEagerly = 0x2;
  /// A font that can't be bound takes the face of kAGFontDefault.
  static constexpr unsigned int kOptionFallBack = 0x4;
  /// A native font of another family than the one that was asked for will do.
  static constexpr unsigned int kOptionAcceptSubstitute = 0x8;

  // Creating and assigning

  /// An empty font, which is not valid.
  AGFont();
  /// A font of a family; it is bound when it is first needed.
  AGFont(const AKString& name, double size, AGFontStyle style);
  /// Shares the native font.
  AGFont(const AGFont& other);
  /// Releases the native font.
  ~AGFont();
  ///@{
  /// Replaces all by the other's, sharing its native font.
  AGFont& operator=(const AGFont& other) {
    Assign(other);
    return *this;
  }
  void Assign(const AGFont& other);
  ///@}
  /// Empty, as a new empty font is, but for the binding, which is tried again when it is asked for.
  void Clear();

  ///@{
  /// What was asked for; the face that was found may differ. The size is in points.
  const AKString& Name() const { return name_; }
  double Size() const { return size_; }
  AGFontStyle Style() const { return style_; }
  ///@}
  /// The same family, size and style. Names are compared byte by byte.
  bool IsEqual(const AGFont& other) const;

  // Changing

  ///@{
  /// Replaces family or size; the binding is made anew.
  void SetName(const AKString& name);
  void SetName(const AKString& name, double size);
  void SetSize(double size);
  ///@}
  /// `round`: to the nearest whole number, halves upwards.
  void MulSize(double factor, bool round);
  ///@{
  /// Replaces the style, or one bit of it.
  void SetStyle(AGFontStyle style);
  void SetRegular() { SetStyle(kAGFontStyleRegular); }
  void SetBold(bool on) { SetStyleBit(kAGFontStyleBold, on); }
  void SetItalic(bool on) { SetStyleBit(kAGFontStyleItalic, on); }
  void SetUnderline(bool on) { SetStyleBit(kAGFontStyleUnderline, on); }
  ///@}

  // The native font (AGFontCache.cpp)

  /// Null when the font can't be bound; owned by the font, until it is changed.
  AGNativeFont* NativeFont() const;
  /// True when there is a native font and the size is above 0.
  bool IsValid() const;

  // Measuring

  ///@{
  /// Units; 0 for a font that is not valid. The descent is positive. A line's height is its ascent, descent and leading
  /// together, which is also how far the baselines of a text of several lines are apart.
  double GetAscent() const;
  double GetDescent() const;
  double GetLeading() const;
  double GetLineHeight() const;
  ///@}

  ///@{
  /// The room that a text takes: the width of what its longest line paints, and the heights of its lines. Zero for an
  /// empty text and a font that is not valid.
  AGSize GetTextExtent(const AKString& text) const;
  AGSize GetUTextExtent(const AKUniChars& text) const;
  ///@}
  /// The text when it fits into `maxWidth`; else as many of its first characters as the ratio of the widths has it, and
  /// "...", which may be slightly wider.
  AKString GetTextTruncated(const AKString& text, double maxWidth) const;
  /// Where to draw a line of text so that it is aligned in `bounds`: to the left or bottom for negative alignments, to
  /// the right or top for positive ones, else in the middle, in whole units.
  AGPoint GetTextPosInBounds(const AGRect& bounds, int hAlign, int vAlign) const;

  // Installed fonts and the start-up of the kit (AGFontRegistry.cpp)

  /// The families that are installed, in byte order, each once; looked up on the first call.
  static const AKStringArray& GetFontNameList();

  ///@{
  /// The options, a sum of the bits above; SetOption changes those that it names.
  static void SetOption(unsigned int option, bool on);
  static unsigned int Options() { return sFontOptions; }
  ///@}
  /// `options`: the low 8 bits are the options from now on. Then binds kAGFontDefault and the fonts made so far.
  static void LowInitialize(unsigned int options);
  /// Unbinds those fonts, empties the cache and the list of names, and clears the options.
  static void LowTerminate();

  /// The registry of fonts made before the initialisation. Commands: 1 register a font, 2 initialise, 3 terminate, 4
  /// forget a font that dies; 0 and any other only ask. Returns whether the kit is initialised.
  static bool LowOutOfGlobalScopeFontsSmartHandler(int command, const AGFont* font);

 private:
  friend struct AGLayout;

  void SetStyleBit(AGFontStyle bit, bool on);
  void CopyFrom(const AGFont& other);
  void BindIfEager() const;
  void LowComputeNative() const;
  void LowInvalidateNative(unsigned int mask, bool noRebind) const;
  void TakeNative(AGNativeFont* native) const;
  AKString CacheKey() const;

  static unsigned int sFontOptions;

  mutable AGNativeFont* native_ = nullptr;
  mutable bool computed_ = true;
  AKString name_;
  double size_ = 0;
  AGFontStyle style_ = kAGFontStyleRegular;
  mutable double lineHeight_ = -1;  ///< negative: not known
};

///@{
/// "Lucida Grande" in 24 and 12 points, and an empty font.
extern const AGFont kAGFontDefault;
extern const AGFont kAGFontDefaultMini;
extern const AGFont kAGNullFont;
///@}
