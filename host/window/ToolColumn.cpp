#include "host/window/ToolColumn.h"

#include <gtkmm/gestureclick.h>
#include <gtkmm/icontheme.h>
#include <gtkmm/image.h>
#include <gtkmm/label.h>

#include "host/Host.h"
#include "host/bundles/ClassRegistry.h"
#include "host/text/DisplayText.h"
#include "host/text/Localisation.h"
#include "host/window/widgets/Focus.h"
#include "host/window/widgets/Tip.h"

namespace host {
namespace {

constexpr int kMostCharacters = 8;  // of a name under its icon
const AKClassID kFirstTool("stdRect");

bool CanBeMade(const RegisteredClass& entry) { return entry.fromBundle && entry.record->constructor != nullptr; }

}  // namespace

ToolColumn::ToolColumn(CanvasView& canvas) : Gtk::Box(Gtk::Orientation::VERTICAL, 4), canvas_(canvas) {
  add_css_class("tools");
  GiveName(this, Tr("Tools"));
  canvas_.SignalToolChanged().connect([this] { ShowTool(); });
  canvas_.SignalToolAsked().connect([this](bool stays) {
    if (const auto classID = LastClass()) canvas_.SetNewClass(classID, stays);
  });
}

void ToolColumn::UpdateClasses() {
  TakeFocusFrom(*this);
  while (Gtk::Widget* child = get_first_child()) remove(*child);
  buttons_.clear();
  AddTool(Tr("Select"), std::nullopt);
  for (const bool isFirst : {true, false}) {
    for (const RegisteredClass& entry : Host::Instance().Classes().Classes()) {
      if (!CanBeMade(entry) || (entry.id == kFirstTool) != isFirst) continue;
      AddTool(DisplayText(DisplayName(*entry.record)), entry.record->classID);
    }
  }
  ShowTool();
}

// A class for which there is no icon has its name below the one for all.
Gtk::Widget* ToolColumn::MakeFace(const std::string& name, std::optional<AKClassID> classID) {
  const std::string own = std::string("objecthost-tool-") + (classID ? classID->chars : "select") + "-symbolic";
  auto* const icon = Gtk::make_managed<Gtk::Image>();
  if (Gtk::IconTheme::get_for_display(get_display())->has_icon(own)) {
    icon->set_from_icon_name(own);
    return icon;
  }
  icon->set_from_icon_name("objecthost-tool-object-symbolic");
  auto* const face = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::VERTICAL, 2);
  auto* const words = Gtk::make_managed<Gtk::Label>(name);
  words->set_max_width_chars(kMostCharacters);
  words->set_ellipsize(Pango::EllipsizeMode::END);
  words->add_css_class("tool-name");
  face->append(*icon);
  face->append(*words);
  return face;
}

void ToolColumn::AddTool(const std::string& name, std::optional<AKClassID> classID) {
  auto* const button = Gtk::make_managed<Gtk::ToggleButton>();
  button->set_child(*MakeFace(name, classID));
  button->set_focus_on_click(false);
  button->set_has_frame(false);
  button->signal_clicked().connect([this, classID] { canvas_.SetNewClass(classID, false); });
  auto twice = Gtk::GestureClick::create();
  twice->signal_released().connect([this, classID](int count, double, double) {
    if (count == 2) canvas_.SetNewClass(classID, true);
  });
  button->add_controller(twice);
  SetTip(button, name + " (" + (classID ? Tr("R; a double click or Shift+R keeps it") : Tr("Escape")) + ")");
  GiveName(button, name);
  append(*button);
  buttons_.emplace_back(button, classID);
}

void ToolColumn::ShowTool() {
  for (const auto& [button, classID] : buttons_) button->set_active(classID == canvas_.NewClass());
  if (canvas_.NewClass()) last_ = canvas_.NewClass();
}

std::optional<AKClassID> ToolColumn::LastClass() const {
  for (const auto& [button, classID] : buttons_) {
    if (classID && (!last_ || classID == last_)) return classID;
  }
  return std::nullopt;
}

}  // namespace host
