// The store of lines that were laid out last. Laying out costs several times as much as drawing, and the labels of a
// document are drawn again and again.
#include <functional>
#include <list>
#include <unordered_map>

#include "platform/text/ShapedLine.h"
#include "platform/text/UnicodeText.h"

namespace platform {
namespace {

// A line of 20 glyphs takes about 1 KB. Longer texts are seldom repeated, and would push many labels out.
constexpr std::size_t kMaxLines = 2048;
constexpr std::size_t kMaxUnits = 128;

struct Entry {
  GObjectRef<PangoFont> font;
  std::vector<UniChar> units;
  NativeRef<const ShapedLine> line;
};

// Looks into an entry, or into a text that is asked for.
struct Key {
  const PangoFont* font;
  std::string_view bytes;

  Key(const PangoFont* keyFont, const UniChar* units, std::size_t count)
      : font(keyFont), bytes(reinterpret_cast<const char*>(units), count * sizeof(UniChar)) {}
  bool operator==(const Key& other) const { return font == other.font && bytes == other.bytes; }
};

struct KeyHash {
  std::size_t operator()(const Key& key) const {
    return std::hash<std::string_view>()(key.bytes) ^ std::hash<const void*>()(key.font);
  }
};

class LineCache {
 public:
  NativeRef<const ShapedLine> Find(const TypeFace& face, const UniChar* units, std::size_t count) {
    const auto found = index_.find(Key(face.font.Get(), units, count));
    if (found == index_.end()) return {};
    entries_.splice(entries_.begin(), entries_, found->second);
    return found->second->line;
  }

  void Add(const TypeFace& face, const UniChar* units, std::size_t count, const NativeRef<const ShapedLine>& line) {
    if (entries_.size() >= kMaxLines) {
      index_.erase(KeyOf(entries_.back()));
      entries_.pop_back();
    }
    entries_.push_front({face.font, std::vector<UniChar>(units, units + count), line});
    index_.emplace(KeyOf(entries_.front()), entries_.begin());
  }

 private:
  static Key KeyOf(const Entry& entry) { return {entry.font.Get(), entry.units.data(), entry.units.size()}; }

  std::list<Entry> entries_;  // those used last first
  std::unordered_map<Key, std::list<Entry>::iterator, KeyHash> index_;
};

NativeRef<const ShapedLine> NewLine(const TypeFace& face, const UniChar* units, std::size_t count) {
  std::string text = DisplayText(units, count);
  const PangoDirection direction = ParagraphDirection(text);
  return ShapeLine(face, std::move(text), direction, nullptr);
}

}  // namespace

NativeRef<const ShapedLine> CachedLine(const TypeFace& face, const UniChar* units, std::size_t count) {
  static LineCache& cache = *new LineCache;  // its fonts live as long as the process
  if (count > kMaxUnits) return NewLine(face, units, count);
  NativeRef<const ShapedLine> line = cache.Find(face, units, count);
  if (line.Get() == nullptr) {
    line = NewLine(face, units, count);
    cache.Add(face, units, count, line);
  }
  return line;
}

}  // namespace platform
