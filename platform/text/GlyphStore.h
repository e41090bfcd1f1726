// The pixels of glyphs that were used last, of all fonts and scales. Private to the native layer.
//
// It is measured in bytes: a text in a hundred sizes or angles keeps as much of it as one in a single size with a
// hundred times the letters. What was not used for longest goes first.
#pragma once

#include <cairo.h>

#include <cstdint>
#include <memory>
#include <unordered_map>

#include "platform/text/GlyphMasks.h"

namespace platform {

class GlyphStore {
 public:
  static constexpr std::size_t kMaxBytes = 32 << 20;
  /// A larger mask is not kept: it would push a whole text out.
  static constexpr std::size_t kMaxMaskBytes = kMaxBytes / 32;

  /// The process's one, for the host's thread as all text.
  static GlyphStore& Shared();

  /// Keeps all masks where they are while it lives.
  class Use {
   public:
    explicit Use(GlyphStore& store) : store_(store) {
      ++store_.users_;
      ++store_.clock_;
    }
    Use(const Use&) = delete;
    Use& operator=(const Use&) = delete;
    ~Use() {
      if (--store_.users_ == 0 && store_.byteCount_ > kMaxBytes) store_.Trim();
    }

   private:
    GlyphStore& store_;
  };

  /// The masks at the scale of `m`, which leads to device space; their edges are soft or not. For the time of a Use, as
  /// what they give.
  GlyphMasks& MasksFor(FontFace* face, const cairo_matrix_t& m, bool isSoft);
  const GlyphMask& Mask(GlyphMasks* masks, std::uint32_t glyph, unsigned int step) {
    GlyphMask& mask = masks->Mask(glyph, step, &byteCount_);
    mask.lastUse = clock_;
    return mask;
  }

  /// Forgets everything of a font that ends.
  void Forget(const FontFace* face);

 private:
  struct Key {
    const FontFace* face;
    double xx, yx, xy, yy;
    bool isSoft;
    bool operator==(const Key&) const = default;
  };
  struct KeyHash {
    std::size_t operator()(const Key& key) const;
  };

  void Trim();
  std::uint64_t ClockToKeepFrom() const;

  std::unordered_map<Key, std::unique_ptr<GlyphMasks>, KeyHash> scales_;
  std::size_t byteCount_ = 0;
  std::uint64_t clock_ = 0;
  unsigned int users_ = 0;
};

}  // namespace platform
