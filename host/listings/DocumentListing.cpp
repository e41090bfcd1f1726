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

bool IsClassProperty(const AKString& key) {
  return !(key == "Bounds") && !(key == "Angle") && !(key == "Brush") && !(key == "Pen");
}

std::string Header(const DocumentObject& object, std::size_t index) {
  return std::to_string(index) + "  " + Printable(object.classID.chars) +
         (object.IsPlaceholder() ? " (placeholder)" : "");
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
