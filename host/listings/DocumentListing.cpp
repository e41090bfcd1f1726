#include "host/listings/DocumentListing.h"

#include <cstdio>
#include <unordered_map>

#include "host/model/ObjectProperties.h"
#include "host/text/DisplayText.h"
#include "host/text/Printable.h"
#include "kit/geometry/AGConstants.h"
#include "kit/values/AKValue.h"

namespace host {
namespace {

std::string Number(double value) {
  char text[32];
  std::snprintf(text, sizeof(text), "%.7g", value);
  return text;
}

std::string RectText(const AGRect& rect) {
  return "(" + Number(rect.x0) + ";" + Number(rect.y0) + ";" + Number(rect.x1) + ";" + Number(rect.y1) + ")";
}

std::string RoundedText(const AKValue& value) {
  if (value.Type() == kAKValueTypeFloat) {
    double number = 0;
    value.GetasFloat(&number, false);
    return Number(number);
  }
  if (const AKDictionary* dictionary = value.GetasAKDictionary()) {
    std::string text = "{";
    dictionary->ForEach([&text](const AKString& key, const AKValue& entry) {
      text += (text.size() > 1 ? " " : "") + DisplayText(key) + "=" + RoundedText(entry);
    });
    return text + "}";
  }
  return TextOf(value);
}

std::string HexText(AGColor color) {
  char text[16];
  std::snprintf(text, sizeof(text), "#%02x%02x%02x", color.Red(), color.Green(), color.Blue());
  return text;
}

bool IsClassProperty(const AKString& key) {
  return !(key == "Bounds") && !(key == "Angle") && !(key == "Brush") && !(key == "Pen");
}

std::string Header(const DocumentObject& object, std::size_t index) {
  return std::to_string(index) + "  " + Printable(object.classID.chars) +
         (object.IsPlaceholder() ? " (placeholder)" : "");
}

// The label's first line, and what of it is not as in a new one.
std::string LabelText(const ObjectLabel& label) {
  const ObjectLabel plain;
  const std::size_t end = label.text.find('\n');
  std::string text = "  label \"" + Printable(label.text.substr(0, end)) + (end == std::string::npos ? "\"" : "\"...");
  if (!label.font.empty()) text += " " + Printable(label.font);
  if (label.size != plain.size) text += " " + Number(label.size);
  if (label.bold) text += " bold";
  if (label.italic) text += " italic";
  if (label.across != plain.across) text += std::string(" ") + NameOf(label.across);
  if (label.down != plain.down) text += std::string(" ") + NameOf(label.down);
  if (label.direction != plain.direction) text += std::string(" ") + NameOf(label.direction);
  if (!(label.color == plain.color)) text += " " + HexText(label.color);
  return text;
}

// What users set of objects; groups by their numbers.
class MarkTexts {
 public:
  explicit MarkTexts(const Document& document) {
    for (const GroupID group : document.GroupsInOrder()) numbers_.emplace(group, numbers_.size());
  }
  std::string Of(const ObjectMarks& marks) const {
    std::string text = marks.hidden ? "  hidden" : "";
    if (marks.locked) text += "  locked";
    if (marks.look.opacity != 1) text += "  opacity " + Number(marks.look.opacity * 100) + " %";
    if (marks.look.flippedX) text += "  flipped horizontally";
    if (marks.look.flippedY) text += "  flipped vertically";
    for (std::size_t i = 0; i < marks.look.dashes.size(); ++i) {
      text += (i == 0 ? "  dashes " : ",") + Number(marks.look.dashes[i]);
    }
    if (marks.label != nullptr) text += LabelText(*marks.label);
    for (std::size_t i = 0; i < marks.groups.size(); ++i) {
      text += (i == 0 ? "  in g" : "/g") + std::to_string(numbers_.at(marks.groups[i]));
    }
    return text;
  }

 private:
  std::unordered_map<GroupID, std::size_t> numbers_;
};

}  // namespace

std::string AidsText(const PageAids& aids) {
  std::string text = std::string("unit ") + NameOf(aids.unit) + ", grid " + Number(aids.gridStep);
  for (int axis = 0; axis < 2; ++axis) {
    const std::vector<double>& guides = aids.Guides(axis);
    for (std::size_t i = 0; i < guides.size(); ++i) {
      text += (i > 0 ? "," : axis == 0 ? ", vertical guides " : ", horizontal guides ") + Number(guides[i]);
    }
  }
  return text + "\n";
}

std::string ShortListing(const Document& document, const ListedObjects& listed) {
  std::string text;
  const MarkTexts marks(document);
  std::size_t number = 0;
  document.ForEachObject([&](const DocumentObject& object) {
    const std::size_t own = number++;
    if (listed && !listed->contains(object.id)) return;
    text += Header(object, own) + "  " + RectText(object.bounds) + "  " + Number(object.angle * kRadToDeg);
    PropertiesOf(object).ForEach([&text](const AKString& key, const AKValue& value) {
      if (IsClassProperty(key)) text += "  " + Printable(DisplayText(key) + "=" + RoundedText(value));
    });
    text += marks.Of(object.marks) + "\n";
  });
  return text;
}

std::string FullListing(const Document& document, const ListedObjects& listed) {
  std::string text = "page " + Number(document.Page().width) + " by " + Number(document.Page().height) + "\n";
  if (const PageAids& aids = document.Aids(); !(aids == PageAids())) text += AidsText(aids);
  const MarkTexts marks(document);
  std::size_t number = 0;
  document.ForEachObject([&](const DocumentObject& object) {
    const std::size_t own = number++;
    if (listed && !listed->contains(object.id)) return;
    text += Header(object, own);
    PropertiesOf(object).ForEach([&text](const AKString& key, const AKValue& value) {
      text += "  " + Printable(DisplayText(key) + "=" + RoundedText(value));
    });
    text += marks.Of(object.marks) + "\n";
  });
  return text;
}

}  // namespace host
