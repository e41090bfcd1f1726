#include "host/window/canvas/GuideField.h"

#include <gdk/gdkkeysyms.h>
#include <glibmm/main.h>
#include <gtkmm/eventcontrollerkey.h>

#include "host/text/Localisation.h"

namespace host {
namespace {

constexpr double kFarthest = 1e6;  // map units

}  // namespace

std::string NameOf(const Guide& guide) { return Tr(guide.axis == 0 ? N_("Vertical Guide") : N_("Horizontal Guide")); }

GuideField::GuideField(Gtk::Widget& owner) : field_(-kFarthest, kFarthest, 1, 2, Tr("Place of the Guide")) {
  field_.SetMeasure(Measure::kLength);
  row_.append(name_);
  row_.append(field_);
  popover_.set_child(row_);
  popover_.set_parent(owner);
  // The field takes over what is typed at Enter, and may refuse it.
  auto keys = Gtk::EventControllerKey::create();
  keys->set_propagation_phase(Gtk::PropagationPhase::CAPTURE);
  keys->signal_key_pressed().connect(
      [this](guint key, guint, Gdk::ModifierType) {
        const bool isEnter = key == GDK_KEY_Return || key == GDK_KEY_KP_Enter || key == GDK_KEY_ISO_Enter;
        if (!isEnter && key != GDK_KEY_Linefeed) return false;
        field_.TakeOver();
        if (!field_.IsBeingTyped()) popover_.popdown();
        return true;
      },
      false);
  popover_.add_controller(keys);
  popover_.signal_closed().connect([this, &owner] {
    TypedField::GiveUpLeft(popover_);
    Glib::signal_idle().connect_once([&owner] { owner.grab_focus(); }, Glib::PRIORITY_HIGH);
  });
}

GuideField::~GuideField() { popover_.unparent(); }

void GuideField::Open(const AGPoint& point, const std::string& name, double place, LengthUnit unit) {
  name_.set_text(name);
  field_.SetUnit(unit);
  field_.Show(place);
  popover_.set_pointing_to({static_cast<int>(point.x), static_cast<int>(point.y), 1, 1});
  popover_.popup();
  field_.grab_focus();
  field_.select_region(0, -1);
}

}  // namespace host
