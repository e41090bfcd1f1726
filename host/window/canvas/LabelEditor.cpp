#include "host/window/canvas/LabelEditor.h"

#include <algorithm>
#include <cmath>

#include "host/text/Localisation.h"
#include "host/window/SlideStep.h"
#include "host/window/widgets/Focus.h"

namespace host {
namespace {

// Pixels: what can be typed in, however small the object is.
constexpr double kLeastWidth = 140;
constexpr double kLeastHeight = 48;
constexpr double kLeastFont = 9;
constexpr double kMostFont = 96;

Gtk::Justification JustificationOf(LabelAcross across) {
  if (across == LabelAcross::kLeft) return Gtk::Justification::LEFT;
  return across == LabelAcross::kRight ? Gtk::Justification::RIGHT : Gtk::Justification::CENTER;
}

// A name within quotes of a style sheet; empty where it would end them.
std::string Quoted(const std::string& family) {
  const bool ends = std::ranges::any_of(family, [](char c) { return c == '"' || c == '\\' || (c >= 0 && c < ' '); });
  return family.empty() || ends ? "" : "font-family: \"" + family + "\";";
}

}  // namespace

LabelEditor::LabelEditor(CanvasView& canvas)
    : canvas_(canvas),
      area_(Tr("Label"), [this](const std::string& text) { return Take(text); }),
      style_(Gtk::CssProvider::create()) {
  set_child(canvas_);
  add_overlay(area_);
  area_.set_visible(false);
  area_.View().get_style_context()->add_provider(style_, GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
  area_.SignalEnded().connect([this] { End(); });
  signal_get_child_position().connect([this](Gtk::Widget*, Gdk::Rectangle& place) { return GetPlace(&place); }, false);
  canvas_.SignalViewChanged().connect([this] {
    if (object_ == kNoObjectID) return;
    ShowStyle();
    queue_allocate();
  });
}

void LabelEditor::SetSession(DocumentSession* session) {
  area_.GiveUp();
  session_ = session;
}

void LabelEditor::Begin() {
  if (session_ == nullptr || session_->Selection().IsEmpty()) return;
  const ObjectIDs ids{session_->Selection().IDs().back()};
  if (const auto done = CheckEditable(session_->Doc(), ids); !done) return problem_.emit(done.Why());
  canvas_.RevealObject(ids[0]);
  object_ = ids[0];
  const ObjectLabel* label = session_->Doc().Find(object_)->marks.label.get();
  area_.View().set_justification(JustificationOf(label == nullptr ? LabelAcross::kCenter : label->across));
  ShowStyle();
  area_.set_visible(true);
  area_.Edit(label == nullptr ? "" : label->text);
}

bool LabelEditor::Take(const std::string& text) {
  if (session_ == nullptr || session_->Doc().Find(object_) == nullptr) return true;
  SlideStep::End();
  const auto done = session_->Labels().Change({object_}, {.text = text});
  if (!done) problem_.emit(done.Why());
  return static_cast<bool>(done);
}

void LabelEditor::End() {
  object_ = kNoObjectID;
  const bool hadFocus = TakeFocusFrom(area_);
  area_.set_visible(false);
  if (hadFocus) canvas_.grab_focus();
}

// Over the middle of the object, in the view.
bool LabelEditor::GetPlace(Gdk::Rectangle* place) const {
  const DocumentObject* object = session_ == nullptr ? nullptr : session_->Doc().Find(object_);
  if (object == nullptr) return false;
  const double zoom = canvas_.View().Zoom();
  const double width = std::min(std::max(object->bounds.Width() * zoom, kLeastWidth), double(get_width()));
  const double height = std::min(std::max(object->bounds.Height() * zoom, kLeastHeight), double(get_height()));
  const AGPoint middle = canvas_.View().ToView(object->bounds.Center());
  const double x = std::clamp(middle.x - width / 2, 0.0, get_width() - width);
  const double y = std::clamp(middle.y - height / 2, 0.0, get_height() - height);
  *place = {int(std::lround(x)), int(std::lround(y)), int(width), int(height)};
  return true;
}

// As the label looks, in a size that can be read.
void LabelEditor::ShowStyle() {
  const DocumentObject* object = session_->Doc().Find(object_);
  if (object == nullptr) return;
  const ObjectLabel label = object->marks.label == nullptr ? ObjectLabel() : *object->marks.label;
  const double size = std::clamp(label.size * canvas_.View().Zoom(), kLeastFont, kMostFont);
  style_->load_from_data("textview { " + Quoted(label.font) + "font-size: " + std::to_string(std::lround(size)) +
                         "px; font-weight: " + (label.bold ? "bold" : "normal") +
                         "; font-style: " + (label.italic ? "italic" : "normal") + "; }");
}

}  // namespace host
