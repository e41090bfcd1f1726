#include "host/window/widgets/TypedField.h"

#include <gtkmm/dropdown.h>
#include <gtkmm/popover.h>
#include <gtkmm/scale.h>

#include "host/window/SlideStep.h"
#include "host/window/widgets/Focus.h"
#include "host/window/widgets/NameField.h"

namespace host {
namespace {

bool IsOpen(Gtk::DropDown& choice) {
  for (Gtk::Widget* child = choice.get_first_child(); child != nullptr; child = child->get_next_sibling()) {
    if (GTK_IS_POPOVER(child->gobj()) && child->get_visible()) return true;
  }
  return false;
}

}  // namespace

TypedField* TypedField::Focused(Gtk::Window& window) {
  for (Gtk::Widget* widget = window.get_focus(); widget != nullptr; widget = widget->get_parent()) {
    if (auto* const field = dynamic_cast<TypedField*>(widget)) return field;
  }
  return nullptr;
}

void TypedField::GiveUpLeft(Gtk::Widget& root) {
  auto* const field = dynamic_cast<TypedField*>(&root);
  if (field != nullptr) {
    if (field->IsBeingTyped() && !HasFocus(root)) field->GiveUp();
    return;
  }
  for (Gtk::Widget* child = root.get_first_child(); child != nullptr; child = child->get_next_sibling()) {
    GiveUpLeft(*child);
  }
}

bool IsHeld(Gtk::Widget& root) {
  if (const auto* const scale = dynamic_cast<Gtk::Scale*>(&root)) return SlideStep::IsHeld(*scale);
  if (const auto* const name = dynamic_cast<NameField*>(&root)) return name->IsBeingTyped();
  if (auto* const choice = dynamic_cast<Gtk::DropDown*>(&root)) return IsOpen(*choice);
  for (Gtk::Widget* child = root.get_first_child(); child != nullptr; child = child->get_next_sibling()) {
    if (IsHeld(*child)) return true;
  }
  return false;
}

}  // namespace host
