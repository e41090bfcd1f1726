#include "host/labels/ObjectLabel.h"

#include "host/text/Utf8Check.h"

namespace host {
namespace {

bool IsText(const std::string& text, std::size_t most) {
  return text.size() <= most && text.find('\0') == std::string::npos && FindInvalidUtf8(text) == text.size();
}

}  // namespace

const char* NameOf(LabelAcross across) {
  constexpr const char* kNames[] = {"left", "center", "right"};
  return kNames[static_cast<std::size_t>(across)];
}

const char* NameOf(LabelDown down) {
  constexpr const char* kNames[] = {"top", "middle", "bottom"};
  return kNames[static_cast<std::size_t>(down)];
}

const char* NameOf(LabelDirection direction) {
  constexpr const char* kNames[] = {"auto", "ltr", "rtl"};
  return kNames[static_cast<std::size_t>(direction)];
}

bool IsLabel(const ObjectLabel& label) {
  return !label.text.empty() && IsText(label.text, ObjectLabel::kMostBytes) &&
         IsText(label.font, ObjectLabel::kMostFontBytes) && label.size >= ObjectLabel::kLeastSize &&
         label.size <= ObjectLabel::kMostSize && label.across <= LabelAcross::kRight &&
         label.down <= LabelDown::kBottom && label.direction <= LabelDirection::kRightToLeft;
}

std::string WithPlainLineEnds(const std::string& text) {
  std::string plain;
  plain.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
    plain += text[i] == '\r' ? '\n' : text[i];
  }
  return plain;
}

}  // namespace host
