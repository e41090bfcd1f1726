#include "platform/text/ShapedLine.h"

#include <fribidi.h>

#include <algorithm>
#include <cmath>

#include "platform/text/TextEngine.h"

namespace platform {
namespace {

// Puts the runs of one line beside each other.
class LineBuilder {
 public:
  LineBuilder(ShapedLine* line, std::vector<ClusterAdvance>* advances)
      : line_(line), advances_(advances), tabWidth_(line->metrics.tabWidth), glyphs_(pango_glyph_string_new()) {}

  void Add(PangoItem* item) {
    if (item->analysis.font == nullptr) return;
    if (line_->text[static_cast<std::size_t>(item->offset)] == '\t') {
      AddTabs(*item);
      return;
    }
    pango_shape_item(item, line_->text.data(), static_cast<int>(line_->text.size()), nullptr, glyphs_.get(),
                     PANGO_SHAPE_NONE);
    AddGlyphs(*item);
  }

 private:
  void AddTabs(const PangoItem& item) {
    if (!(tabWidth_ > 0)) return;
    for (int i = 0; i < item.length; ++i) {
      const double end = (std::floor(line_->width / tabWidth_) + 1) * tabWidth_;
      if (advances_ != nullptr) {
        advances_->push_back({static_cast<std::size_t>(item.offset + i), end - line_->width});
      }
      line_->width = end;
    }
  }

  void AddGlyphs(const PangoItem& item) {
    const auto offset = static_cast<std::size_t>(item.offset);
    FontFace& face = FontFace::Of(item.analysis.font);
    const std::size_t first = line_->glyphs.size();
    for (int i = 0; i < glyphs_->num_glyphs; ++i) {
      const PangoGlyphInfo& info = glyphs_->glyphs[i];
      const std::size_t index = offset + static_cast<std::size_t>(glyphs_->log_clusters[i]);
      double advance = info.geometry.width * kPerPangoUnit;
      PangoGlyph glyph = info.glyph;
      if ((glyph & PANGO_GLYPH_UNKNOWN_FLAG) != 0) {  // no installed font has it: the font's own mark for that
        glyph = 0;
        advance = face.GlyphAdvance(0);
      }
      if (glyph != PANGO_GLYPH_EMPTY) {
        line_->glyphs.push_back(
            {glyph, line_->width + info.geometry.x_offset * kPerPangoUnit, -info.geometry.y_offset * kPerPangoUnit});
        line_->textIndexes.push_back(static_cast<std::uint32_t>(index));
      }
      if (advances_ != nullptr) advances_->push_back({index, advance});
      line_->width += advance;
    }
    line_->runs.push_back({GObjectRef<PangoFont>::Share(item.analysis.font), first, line_->glyphs.size() - first,
                           offset, static_cast<std::size_t>(item.length), item.analysis.level % 2 != 0});
    FontMetrics& all = line_->metrics;
    const FontMetrics& own = face.Metrics();
    all.ascent = std::max(all.ascent, own.ascent);
    all.descent = std::max(all.descent, own.descent);
    all.leading = std::max(all.leading, own.leading);
  }

  ShapedLine* line_;
  std::vector<ClusterAdvance>* advances_;
  double tabWidth_;
  PangoGlyphs glyphs_;
};

struct ItemDeleter {
  void operator()(PangoItem* item) const { pango_item_free(item); }
};
using Item = std::unique_ptr<PangoItem, ItemDeleter>;

std::vector<Item> Itemize(const TypeFace& face, const std::string& text, PangoDirection direction) {
  static const PangoAttributes noAttributes(pango_attr_list_new());
  PangoContext* context = TextContext();
  pango_context_set_font_description(context, face.description.get());
  GList* list = pango_itemize_with_base_dir(context, direction, text.data(), 0, static_cast<int>(text.size()),
                                            noAttributes.get(), nullptr);
  std::vector<Item> items;
  for (GList* at = list; at != nullptr; at = at->next) items.emplace_back(static_cast<PangoItem*>(at->data));
  g_list_free(list);
  return items;
}

// From the order of the text to that from left to right (UAX 9, rule L2). pango's own function for this goes through
// the whole line again for each item.
void PutInVisualOrder(std::vector<Item>* items) {
  const auto levelOf = [](const Item& item) { return int{item->analysis.level}; };
  int highest = 0;
  for (const Item& item : *items) highest = std::max(highest, levelOf(item));
  for (int level = highest; level > 0; --level) {
    const auto isBelow = [&](const Item& item) { return levelOf(item) < level; };
    for (auto at = items->begin(); at != items->end();) {
      const auto first = std::find_if_not(at, items->end(), isBelow);
      at = std::find_if(first, items->end(), isBelow);
      std::reverse(first, at);
    }
  }
}

}  // namespace

const InkBox& ShapedLine::Ink() const {
  if (inkIsKnown_) return ink_;
  for (const ShapedRun& run : runs) {
    FontFace& face = FontFace::Of(run.font.Get());
    for (std::size_t i = run.firstGlyph; i < run.firstGlyph + run.glyphCount; ++i) {
      InkBox box = face.GlyphInk(static_cast<std::uint32_t>(glyphs[i].index));
      box.Move(glyphs[i].x, glyphs[i].y);
      ink_.Add(box);
    }
  }
  inkIsKnown_ = true;
  return ink_;
}

PangoDirection ParagraphDirection(std::string_view text) {
  const char* const end = text.data() + text.size();
  for (const char* at = text.data(); at < end; at = g_utf8_next_char(at)) {
    const FriBidiCharType type = fribidi_get_bidi_type(g_utf8_get_char(at));
    if (FRIBIDI_IS_LETTER(type)) return FRIBIDI_IS_RTL(type) ? PANGO_DIRECTION_RTL : PANGO_DIRECTION_LTR;
  }
  return PANGO_DIRECTION_LTR;
}

NativeRef<const ShapedLine> ShapeLine(const TypeFace& face, std::string text, PangoDirection direction,
                                      std::vector<ClusterAdvance>* advances) {
  auto* line = new ShapedLine;
  NativeRef<const ShapedLine> result = TakeRef<const ShapedLine>(line);
  line->text = std::move(text);
  line->metrics = FontFace::Of(face.font.Get()).Metrics();
  std::vector<Item> items = Itemize(face, line->text, direction);
  PutInVisualOrder(&items);
  LineBuilder builder(line, advances);
  for (const Item& item : items) builder.Add(item.get());
  return result;
}

}  // namespace platform
