#include "host/window/panels/LabelPanel.h"

#include <gtkmm/expression.h>
#include <gtkmm/stringobject.h>

#include <algorithm>
#include <utility>

#include "host/text/Localisation.h"
#include "host/window/SlideStep.h"
#include "host/window/panels/BrushEditor.h"

namespace host {
namespace {

enum Row : int { kText, kFont, kSize, kStyle, kColor, kAcross, kDown, kDirection };

constexpr int kTextHeight = 64;  // pixels

// Whether all have what `get` tells of the first.
template <typename Get>
bool AreSame(const std::vector<const ObjectLabel*>& labels, Get get) {
  return std::ranges::all_of(labels, [&](const ObjectLabel* label) { return get(*label) == get(*labels[0]); });
}

guint FaceOf(const ObjectLabel& label) { return (label.bold ? 1U : 0U) + (label.italic ? 2U : 0U); }

}  // namespace

LabelPanel::LabelPanel()
    : text_(Tr("Label Text"), [this](const std::string& text) { return Change({.text = text}, ""); }),
      size_(ObjectLabel::kLeastSize, ObjectLabel::kMostSize, 1, 1, Tr("Label Size")) {
  text_.set_size_request(-1, kTextHeight);
  color_.set_use_alpha(true);
  size_.SetMeasure(Measure::kLength);
  grid_.Row(kText, Tr("Text"), text_);
  grid_.Row(kFont, Tr("Font"), font_);
  grid_.Row(kSize, Tr("Size (pt)"), size_);
  grid_.Row(kStyle, Tr("Style"), style_);
  grid_.Row(kColor, Tr("Color"), color_);
  AddChoice(kAcross, Tr("Horizontal"), {Tr("Left"), Tr("Center"), Tr("Right")}, &across_, &LabelChange::across);
  AddChoice(kDown, Tr("Vertical"), {Tr("Top"), Tr("Middle"), Tr("Bottom")}, &down_, &LabelChange::down);
  AddChoice(kDirection, Tr("Direction"), {Tr("Automatic"), Tr("Left to Right"), Tr("Right to Left")}, &direction_,
            &LabelChange::direction);
  append(grid_);
  style_.set_model(Gtk::StringList::create({Tr("Regular"), Tr("Bold"), Tr("Italic"), Tr("Bold Italic")}));
  style_.property_selected().signal_changed().connect([this] {
    const guint style = style_.get_selected();
    if (!IsRefreshing() && style < 4) Change({.bold = (style & 1) != 0, .italic = (style & 2) != 0}, "");
  });
  size_.SignalChosen().connect([this](double size) { Change({.size = size}, "label size"); });
  color_.signal_color_set().connect([this] { Change({.color = FromRGBA(color_.get_rgba())}, ""); });
  font_.set_enable_search(true);
  font_.set_expression(Gtk::PropertyExpression<Glib::ustring>::create(GTK_TYPE_STRING_OBJECT, "string"));
  font_.property_selected().signal_changed().connect([this] { ChooseFont(); });
  font_.signal_map().connect([this] { FillFonts(); });
}

template <typename Choice>
void LabelPanel::AddChoice(int row, const char* title, const std::vector<Glib::ustring>& names, Gtk::DropDown* choice,
                           std::optional<Choice> LabelChange::*field) {
  choice->set_model(Gtk::StringList::create(names));
  grid_.Row(row, title, *choice);
  choice->property_selected().signal_changed().connect([this, choice, field, count = names.size()] {
    LabelChange change;
    if (IsRefreshing() || choice->get_selected() >= count) return;
    change.*field = static_cast<Choice>(choice->get_selected());
    Change(change, "");
  });
}

// Families are many, and looked up when the panel is seen first.
void LabelPanel::FillFonts() {
  if (fonts_ != nullptr) return;
  std::vector<Glib::ustring> names;
  for (const auto& family : get_pango_context()->get_font_map()->list_families()) names.push_back(family->get_name());
  std::ranges::sort(names, {}, &Glib::ustring::raw);
  names.insert(names.begin(), Tr("System"));
  fonts_ = Gtk::StringList::create(names);
  font_.set_model(fonts_);
  RefreshSoon();
}

void LabelPanel::ChooseFont() {
  const guint index = font_.get_selected();
  if (IsRefreshing() || fonts_ == nullptr || index >= fonts_->get_n_items()) return;
  Change({.font = index == 0 ? std::string() : fonts_->get_string(index).raw()}, "");
}

bool LabelPanel::Change(const LabelChange& change, const char* burst) {
  if (IsRefreshing() || Session() == nullptr || Session()->Selection().IsEmpty()) return true;
  if (*burst == '\0') {
    SlideStep::End();
  } else {
    SlideStep::Continue(Session(), burst);
  }
  const auto done = Session()->Labels().Change(Session()->Selection().IDs(), change);
  Report(done);
  return static_cast<bool>(done);
}

void LabelPanel::OnSelectionChanged() {
  otherSelection_ = true;
  EditorPanel::OnSelectionChanged();
}

LabelPanel::Labels LabelPanel::SelectedLabels() const {
  Labels labels;
  for (const ObjectID id : Session()->Selection().IDs()) {
    if (const ObjectLabel* label = Session()->Doc().Find(id)->marks.label.get()) labels.push_back(label);
  }
  return labels;
}

// A family that is not installed is listed behind the others.
void LabelPanel::ShowFont(const Labels& labels) {
  if (fonts_ == nullptr) return;
  const std::string& family = labels[0]->font;
  const bool isMixed = !AreSame(labels, [](const ObjectLabel& label) { return label.font; });
  guint index = 0;
  const guint count = fonts_->get_n_items();
  if (!family.empty()) {
    for (index = 1; index < count && fonts_->get_string(index).raw() != family;) ++index;
  }
  if (index == count) fonts_->append(family);
  ShowChoice(&font_, index, isMixed);
  grid_.ShowMixed(kFont, isMixed);
}

void LabelPanel::Refresh() {
  const bool any = Session() != nullptr && !Session()->Selection().IsEmpty();
  ShowOrHide(any);
  if (!any) return text_.Show("");
  const ObjectIDs& ids = Session()->Selection().IDs();
  const Labels labels = SelectedLabels();
  if (std::exchange(otherSelection_, false)) SignalContent().emit(!labels.empty());
  for (int row = kFont; row <= kDirection; ++row) grid_.get_child_at(1, row)->set_sensitive(!labels.empty());
  const bool sameText = labels.empty() || (labels.size() == ids.size() &&
                                           AreSame(labels, [](const ObjectLabel& label) { return label.text; }));
  text_.Show(labels.empty() || !sameText ? "" : labels[0]->text);
  grid_.ShowMixed(kText, !sameText);
  const ObjectLabel plain;
  const Labels shown = labels.empty() ? Labels{&plain} : labels;
  ShowFont(shown);
  const auto size = [](const ObjectLabel& label) { return label.size; };
  AreSame(shown, size) ? size_.Show(shown[0]->size) : size_.ShowMixed();
  color_.set_rgba(ToRGBA(shown[0]->color));
  grid_.ShowMixed(kColor, !AreSame(shown, [](const ObjectLabel& label) { return label.color.rgba; }));
  const auto show = [&](Row row, Gtk::DropDown* choice, auto get) {
    const bool isMixed = !AreSame(shown, get);
    ShowChoice(choice, static_cast<guint>(get(*shown[0])), isMixed);
    grid_.ShowMixed(row, isMixed);
  };
  show(kStyle, &style_, FaceOf);
  show(kAcross, &across_, [](const ObjectLabel& label) { return label.across; });
  show(kDown, &down_, [](const ObjectLabel& label) { return label.down; });
  show(kDirection, &direction_, [](const ObjectLabel& label) { return label.direction; });
}

}  // namespace host
