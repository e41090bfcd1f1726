#include "host/labels/LabelLayout.h"

#include <algorithm>
#include <cstdint>
#include <list>
#include <type_traits>
#include <unordered_map>

#include "CoreFoundation/CFDictionary.h"
#include "CoreFoundation/CFNumber.h"
#include "CoreGraphics/CGColor.h"
#include "CoreText/CTFont.h"
#include "CoreText/CTFontTraits.h"
#include "CoreText/CTFramesetter.h"
#include "CoreText/CTLine.h"
#include "CoreText/CTParagraphStyle.h"
#include "CoreText/CTStringAttributes.h"
#include "kit/system/AKMacOS.h"

namespace host {
namespace {

constexpr const char* kSystemFamily = "sans-serif";
constexpr double kMargin = 4;          // map units, on each side
constexpr double kMostOfSide = 0.125;  // of which the margin takes at most that part
constexpr double kSpareLines = 2;      // below the room, so that one that is cut off is there
constexpr std::size_t kMostLayouts = 16384;
constexpr std::size_t kMostTextBytes = 1U << 20;  // of all layouts that are kept

struct Release {
  void operator()(CFTypeRef object) const { CFRelease(object); }
};
template <typename Ref>
using Owned = std::unique_ptr<std::remove_pointer_t<Ref>, Release>;

template <std::size_t kCount>
Owned<CFDictionaryRef> NewDictionary(const void* (&keys)[kCount], const void* (&values)[kCount]) {
  return Owned<CFDictionaryRef>(CFDictionaryCreate(kCFAllocatorDefault, keys, values, kCount,
                                                   &kCFTypeDictionaryKeyCallBacks, &kCFTypeDictionaryValueCallBacks));
}

Owned<CFStringRef> NewString(const std::string& utf8) {
  return Owned<CFStringRef>(AKMacOS::CFStringConvert(AKString(utf8.c_str()), kCFStringEncodingUTF8));
}

Owned<CTFontRef> NewFont(const ObjectLabel& label) {
  const Owned<CFStringRef> family = NewString(label.font.empty() ? kSystemFamily : label.font);
  const std::int32_t traits = (label.bold ? +kCTFontTraitBold : 0) | (label.italic ? +kCTFontTraitItalic : 0);
  const Owned<CFNumberRef> number(CFNumberCreate(kCFAllocatorDefault, kCFNumberSInt32Type, &traits));
  const void* traitKeys[] = {kCTFontSymbolicTrait};
  const void* traitValues[] = {number.get()};
  const Owned<CFDictionaryRef> traitDictionary = NewDictionary(traitKeys, traitValues);
  const void* keys[] = {kCTFontFamilyNameAttribute, kCTFontTraitsAttribute};
  const void* values[] = {family.get(), traitDictionary.get()};
  const Owned<CFDictionaryRef> attributes = NewDictionary(keys, values);
  const Owned<CTFontDescriptorRef> descriptor(CTFontDescriptorCreateWithAttributes(attributes.get()));
  return Owned<CTFontRef>(CTFontCreateWithFontDescriptor(descriptor.get(), label.size, nullptr));
}

Owned<CGColorRef> NewColor(AGColor color) {
  constexpr double kFull = 255;
  const CGFloat components[] = {color.Red() / kFull, color.Green() / kFull, color.Blue() / kFull,
                                color.Alpha() / kFull};
  CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
  Owned<CGColorRef> native(CGColorCreate(space, components));
  CGColorSpaceRelease(space);
  return native;
}

Owned<CTParagraphStyleRef> NewParagraphStyle(const ObjectLabel& label) {
  constexpr CTTextAlignment kAlignments[] = {kCTTextAlignmentLeft, kCTTextAlignmentCenter, kCTTextAlignmentRight};
  constexpr CTWritingDirection kDirections[] = {kCTWritingDirectionNatural, kCTWritingDirectionLeftToRight,
                                                kCTWritingDirectionRightToLeft};
  const CTTextAlignment alignment = kAlignments[static_cast<std::size_t>(label.across)];
  const CTWritingDirection direction = kDirections[static_cast<std::size_t>(label.direction)];
  const CTParagraphStyleSetting settings[] = {
      {kCTParagraphStyleSpecifierAlignment, sizeof(alignment), &alignment},
      {kCTParagraphStyleSpecifierBaseWritingDirection, sizeof(direction), &direction}};
  return Owned<CTParagraphStyleRef>(CTParagraphStyleCreate(settings, std::size(settings)));
}

// Null without any font.
Owned<CTFrameRef> NewFrame(const ObjectLabel& label, const AGSize& size) {
  const Owned<CFStringRef> text = NewString(label.text);
  const Owned<CTFontRef> font = NewFont(label);
  if (text == nullptr || font == nullptr) return nullptr;
  const Owned<CGColorRef> color = NewColor(label.color);
  const Owned<CTParagraphStyleRef> style = NewParagraphStyle(label);
  const void* keys[] = {kCTFontAttributeName, kCTForegroundColorAttributeName, kCTParagraphStyleAttributeName};
  const void* values[] = {font.get(), color.get(), style.get()};
  const Owned<CFDictionaryRef> attributes = NewDictionary(keys, values);
  const Owned<CFAttributedStringRef> attributed(
      CFAttributedStringCreate(kCFAllocatorDefault, text.get(), attributes.get()));
  const Owned<CTFramesetterRef> setter(CTFramesetterCreateWithAttributedString(attributed.get()));
  if (setter == nullptr) return nullptr;
  CGMutablePathRef path = CGPathCreateMutable();
  CGPathAddRect(path, nullptr, CGRectMake(0, 0, size.width, size.height));
  Owned<CTFrameRef> frame(CTFramesetterCreateFrame(setter.get(), CFRangeMake(0, 0), path, nullptr));
  CGPathRelease(path);
  return frame;
}

void Include(AGRect* box, double x0, double y0, double x1, double y1) {
  *box = {std::min(box->x0, x0), std::min(box->y0, y0), std::max(box->x1, x1), std::max(box->y1, y1)};
}

// The layouts that were used last.
class LayoutStore {
 public:
  std::shared_ptr<const LabelLayout> Of(const std::shared_ptr<const ObjectLabel>& label, const AGSize& room) {
    const Key key{label.get(), room.width, room.height};
    if (const auto found = index_.find(key); found != index_.end()) {
      entries_.splice(entries_.begin(), entries_, found->second);
      return found->second->layout;
    }
    entries_.push_front({key, label, std::make_shared<const LabelLayout>(*label, room)});
    index_.emplace(key, entries_.begin());
    textBytes_ += label->text.size();
    auto layout = entries_.front().layout;
    while (entries_.size() > kMostLayouts || textBytes_ > kMostTextBytes) Forget();
    return layout;
  }

 private:
  struct Key {
    const ObjectLabel* label;
    double width;
    double height;
    bool operator==(const Key&) const = default;
  };
  struct KeyHash {
    std::size_t operator()(const Key& key) const {
      const std::hash<double> hash;
      return std::hash<const void*>()(key.label) ^ (hash(key.width) * 31 + hash(key.height));
    }
  };
  struct Entry {
    Key key;
    std::shared_ptr<const ObjectLabel> label;  // keeps its address from becoming another's
    std::shared_ptr<const LabelLayout> layout;
  };

  void Forget() {
    textBytes_ -= entries_.back().label->text.size();
    index_.erase(entries_.back().key);
    entries_.pop_back();
  }

  std::list<Entry> entries_;  // those used last first
  std::unordered_map<Key, std::list<Entry>::iterator, KeyHash> index_;
  std::size_t textBytes_ = 0;
};

double RoomIn(double side) { return side - 2 * std::min(kMargin, side * kMostOfSide); }

}  // namespace

std::shared_ptr<const LabelLayout> LabelLayout::Of(const std::shared_ptr<const ObjectLabel>& label,
                                                   const AGSize& object) {
  static LayoutStore& store = *new LayoutStore;  // its fonts live as long as the process
  const AGSize room{RoomIn(object.width), RoomIn(object.height)};
  return room.width > 0 && room.height > 0 ? store.Of(label, room) : nullptr;
}

LabelLayout::LabelLayout(const ObjectLabel& label, const AGSize& room) {
  const AGSize size{room.width, room.height + kSpareLines * label.size};
  frame_ = NewFrame(label, size).release();
  if (frame_ == nullptr || CFArrayGetCount(CTFrameGetLines(frame_)) == 0) return;
  Measure(size);
  const double height = box_.y1 - box_.y0;
  const double top = label.down == LabelDown::kTop || height >= room.height ? room.height / 2
                     : label.down == LabelDown::kMiddle                     ? height / 2
                                                                            : height - room.height / 2;
  dx_ = -room.width / 2;
  dy_ = top - size.height;
  box_ = {box_.x0 + dx_, box_.y0 + dy_, box_.x1 + dx_, box_.y1 + dy_};
  ink_ = {ink_.x0 + dx_, ink_.y0 + dy_, ink_.x1 + dx_, ink_.y1 + dy_};
}

LabelLayout::~LabelLayout() {
  if (frame_ != nullptr) CFRelease(frame_);
}

// The boxes in the frame, which was as large as `size`.
void LabelLayout::Measure(const AGSize& size) {
  CFArrayRef lines = CTFrameGetLines(frame_);
  std::vector<CGPoint> origins(static_cast<std::size_t>(CFArrayGetCount(lines)));
  CTFrameGetLineOrigins(frame_, CFRangeMake(0, 0), origins.data());
  box_ = {size.width, size.height, 0, size.height};
  ink_ = box_;
  for (std::size_t i = 0; i < origins.size(); ++i) {
    const auto* line = static_cast<CTLineRef>(CFArrayGetValueAtIndex(lines, static_cast<CFIndex>(i)));
    CGFloat descent = 0;
    const double width = CTLineGetTypographicBounds(line, nullptr, &descent, nullptr);
    const auto [x, y] = origins[i];
    Include(&box_, std::max(x, 0.0), y - descent, std::min(x + width, size.width), size.height);
    const CGRect ink = CTLineGetImageBounds(line, nullptr);
    if (!(ink.size.width > 0)) continue;
    Include(&ink_, x + ink.origin.x, y + ink.origin.y, x + ink.origin.x + ink.size.width,
            y + ink.origin.y + ink.size.height);
  }
}

void LabelLayout::Draw(CGContextRef port) const {
  if (frame_ == nullptr) return;
  CGContextSaveGState(port);
  CGContextConcatCTM(port, {1, 0, 0, 1, dx_, dy_});
  CGContextSetTextMatrix(port, CGAffineTransformIdentity);
  CGContextSetTextDrawingMode(port, kCGTextFill);
  CTFrameDraw(frame_, port);
  CGContextRestoreGState(port);
}

}  // namespace host
