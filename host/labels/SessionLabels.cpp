#include "host/labels/SessionLabels.h"

#include <algorithm>
#include <cstdio>

#include "host/text/Localisation.h"
#include "host/text/Utf8Check.h"

namespace host {
namespace {

std::string Number(double value) {
  char text[32];
  std::snprintf(text, sizeof(text), "%g", value);
  return text;
}

bool IsText(const std::string& text) {
  return text.find('\0') == std::string::npos && FindInvalidUtf8(text) == text.size();
}

Result<> Check(const LabelChange& change) {
  if (change.text && change.text->size() > ObjectLabel::kMostBytes) {
    return Problem(N_("a label has at most %s bytes of text"), {std::to_string(ObjectLabel::kMostBytes)});
  }
  if ((change.text && !IsText(*change.text)) || (change.font && !IsText(*change.font))) {
    return Problem(N_("the text of a label is no UTF-8"));
  }
  if (change.font && change.font->size() > ObjectLabel::kMostFontBytes) {
    return Problem(N_("the name of the font is too long"));
  }
  if (change.size && !(*change.size >= ObjectLabel::kLeastSize && *change.size <= ObjectLabel::kMostSize)) {
    return Problem(N_("the size of a label is a number from %s to %s"),
                   {Number(ObjectLabel::kLeastSize), Number(ObjectLabel::kMostSize)});
  }
  return {};
}

template <typename Value>
void Take(const std::optional<Value>& from, Value* to) {
  if (from) *to = *from;
}

ObjectLabel Changed(const ObjectLabel& label, const LabelChange& change) {
  ObjectLabel changed = label;
  Take(change.text, &changed.text);
  Take(change.font, &changed.font);
  Take(change.size, &changed.size);
  Take(change.bold, &changed.bold);
  Take(change.italic, &changed.italic);
  Take(change.color, &changed.color);
  Take(change.across, &changed.across);
  Take(change.down, &changed.down);
  Take(change.direction, &changed.direction);
  return changed;
}

}  // namespace

void SessionLabels::Set(ObjectID id, std::shared_ptr<const ObjectLabel> label) {
  ObjectMarks marks = document_.Find(id)->marks;
  marks.label = std::move(label);
  if (marks == document_.Find(id)->marks) return;
  steps_.Step().BeforeMarks(document_, id);
  document_.SetMarks(id, std::move(marks));
}

Result<> SessionLabels::Change(const ObjectIDs& ids, const LabelChange& change) {
  LabelChange taken = change;
  if (taken.text) taken.text = WithPlainLineEnds(*taken.text);
  if (const auto done = Check(taken); !done) return done.Why();
  if (const auto done = CheckEditable(document_, ids); !done) return done.Why();
  const auto hasLabel = [this](ObjectID id) { return document_.Find(id)->marks.label != nullptr; };
  if (!taken.text && std::ranges::none_of(ids, hasLabel)) return Problem(N_("there is no label yet: it needs a text"));
  const bool removes = taken.text && taken.text->empty();
  EditStep step(steps_, removes ? Tr("Remove Label") : Tr("Change Label"));
  for (const ObjectID id : ids) {
    if (removes) {
      Set(id, nullptr);
    } else if (taken.text || hasLabel(id)) {
      const ObjectLabel label = hasLabel(id) ? *document_.Find(id)->marks.label : ObjectLabel();
      Set(id, std::make_shared<const ObjectLabel>(Changed(label, taken)));
    }
  }
  return step.End();
}

}  // namespace host
