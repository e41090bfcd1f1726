#include "platform/text/LineBreaker.h"

#include <algorithm>
#include <string>

#include "platform/text/UnicodeText.h"

namespace platform {
namespace {

bool IsLineBreak(UniChar unit) {
  return unit == '\n' || unit == '\r' || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
}

// The attributes of the places between characters, by the byte of UTF-8 that follows; 0 at all others.
enum Place : unsigned char { kMayBreak = 1, kIsWhite = 2 };

std::vector<unsigned char> PlacesOf(const std::string& text) {
  const auto length = static_cast<int>(text.size());
  const auto characters = static_cast<std::size_t>(g_utf8_strlen(text.data(), length));
  std::vector<PangoLogAttr> attributes(characters + 1);
  pango_get_log_attrs(text.data(), length, -1, pango_language_get_default(), attributes.data(),
                      static_cast<int>(attributes.size()));
  std::vector<unsigned char> places(text.size() + 1, 0);
  const char* at = text.data();
  for (std::size_t i = 0; i <= characters; ++i) {
    unsigned char& place = places[static_cast<std::size_t>(at - text.data())];
    if (attributes[i].is_line_break != 0) place |= kMayBreak;
    if (attributes[i].is_white != 0) place |= kIsWhite;
    if (i < characters) at = g_utf8_next_char(at);
  }
  return places;
}

VisiblePart PartOf(const ShapedLine& line, double visibleWidth, PangoDirection direction) {
  return {direction == PANGO_DIRECTION_RTL ? line.width - visibleWidth : 0, visibleWidth};
}

// Breaks one paragraph that is too wide.
class Paragraph {
 public:
  Paragraph(const TypeFace& face, std::string text, PangoDirection direction,
            const std::vector<ClusterAdvance>& advances)
      : face_(face),
        text_(std::move(text)),
        direction_(direction),
        places_(PlacesOf(text_)),
        advanceAt_(text_.size(), 0) {
    for (const ClusterAdvance& cluster : advances) {
      advanceAt_[cluster.textIndex] += cluster.advance;
      places_[cluster.textIndex] |= kIsCluster;
    }
  }

  bool Break(double width, const TakeLine& take) const {
    for (std::size_t start = 0; start < text_.size();) {
      double visibleWidth = 0;
      const std::size_t end = EndOfLine(start, width, &visibleWidth);
      NativeRef<const ShapedLine> line = ShapeLine(face_, text_.substr(start, end - start), direction_, nullptr);
      const VisiblePart visible = PartOf(*line.Get(), visibleWidth, direction_);
      if (!take(std::move(line), visible)) return false;
      start = end;
    }
    return true;
  }

 private:
  static constexpr unsigned char kIsCluster = 4;

  // Where the next line begins; `*visibleWidth` receives the width up to there without the white space at the end.
  std::size_t EndOfLine(std::size_t start, double width, double* visibleWidth) const {
    double reached = 0;
    double visible = 0;
    std::size_t breakAt = start;
    double visibleAtBreak = 0;
    std::size_t i = start;
    for (; i < text_.size(); ++i) {
      if ((text_[i] & 0xC0) == 0x80) continue;  // inside a character
      if (i > start && (places_[i] & kMayBreak) != 0) {
        breakAt = i;
        visibleAtBreak = visible;
      }
      const bool isWhite = (places_[i] & kIsWhite) != 0;
      reached += advanceAt_[i];
      if (!isWhite && reached > width && i > start && (places_[i] & kIsCluster) != 0) break;
      if (!isWhite) visible = reached;
    }
    if (i < text_.size() && breakAt > start) {
      *visibleWidth = visibleAtBreak;
      return breakAt;
    }
    *visibleWidth = visible;
    return i;
  }

  const TypeFace& face_;
  std::string text_;
  PangoDirection direction_;
  std::vector<unsigned char> places_;
  std::vector<double> advanceAt_;
};

double VisibleWidth(const ShapedLine& line, const std::vector<ClusterAdvance>& advances) {
  std::size_t end = line.text.size();
  while (end > 0 && (line.text[end - 1] == ' ' || line.text[end - 1] == '\t')) --end;
  double trailing = 0;
  for (const ClusterAdvance& cluster : advances) {
    if (cluster.textIndex >= end) trailing += cluster.advance;
  }
  return line.width - trailing;
}

bool AddParagraph(const TypeFace& face, std::string text, PangoDirection given, double width, const TakeLine& take) {
  const PangoDirection direction = given == PANGO_DIRECTION_NEUTRAL ? ParagraphDirection(text) : given;
  std::vector<ClusterAdvance> advances;
  NativeRef<const ShapedLine> whole = ShapeLine(face, text, direction, &advances);
  if (!(whole.Get()->width > width)) {
    const VisiblePart visible = PartOf(*whole.Get(), VisibleWidth(*whole.Get(), advances), direction);
    return take(std::move(whole), visible);
  }
  return Paragraph(face, std::move(text), direction, advances).Break(width, take);
}

}  // namespace

void BreakIntoLines(const TypeFace& face, const std::vector<UniChar>& units, PangoDirection direction, double width,
                    const TakeLine& take) {
  for (std::size_t start = 0; start < units.size();) {
    std::size_t end = start;
    while (end < units.size() && !IsLineBreak(units[end])) ++end;
    if (!AddParagraph(face, DisplayText(&units[start], end - start), direction, width, take)) return;
    const bool isPair = end + 1 < units.size() && units[end] == '\r' && units[end + 1] == '\n';
    start = end + (isPair ? 2 : 1);
  }
}

}  // namespace platform
