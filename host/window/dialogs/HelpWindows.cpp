#include "host/window/dialogs/HelpWindows.h"

#include <gtkmm/flowbox.h>
#include <gtkmm/grid.h>
#include <gtkmm/label.h>
#include <gtkmm/scrolledwindow.h>

#include "host/text/Localisation.h"
#include "host/window/Menus.h"
#include "host/window/dialogs/CloseByEscape.h"

namespace host {
namespace {

struct Line {
  const char* what;
  const char* key;
};

// What the canvas does beside the menus.
constexpr Line kCanvasLines[] = {
    {N_("Move the selection by 1, 10 or 0.1"), N_("Arrows, Shift, Alt")},
    {N_("Change its size by 1, 10 or 0.1"), N_("Ctrl + Arrows, Shift, Alt")},
    {N_("Make an object in the middle of the view"), N_("Insert; R, then Enter")},
    {N_("Take a handle, which the arrows move then; the next one"),
     N_("Enter, of a group Ctrl + Enter; Tab, Shift + Tab")},
    {N_("Next or previous object"), N_("Tab, Shift + Tab, Page Down, Page Up")},
    {N_("Add the next or previous object"), N_("Shift + Page Down, Shift + Page Up")},
    {N_("Leave the canvas"), N_("Ctrl + Tab")},
    {N_("Give up a drag, let go of a handle, leave a group, select nothing"), N_("Escape")},
    {N_("Add to the selection or take away"), N_("Shift + Click")},
    {N_("Take the object below"), N_("Alt + Click")},
    {N_("Menu of the selection"), N_("Right Button, Menu Key, Shift + F10")},
    {N_("Enter a group"), N_("Double Click, Enter")},
    {N_("Draw an object; Shift keeps the tool"), N_("R, Shift + R")},
    {N_("Move a copy"), N_("Ctrl + Drag")},
    {N_("Move along one axis"), N_("Shift + Drag")},
    {N_("Keep the proportions of a stretch"), N_("Shift + Handle")},
    {N_("Keep the center of a stretch"), N_("Ctrl + Handle")},
    {N_("Turn in steps of 15°"), N_("Shift + Turn")},
    {N_("Let go of the grid and of other objects"), N_("Alt + Drag")},
    {N_("Make a guide; back on the ruler it is gone"), N_("Drag from a Ruler")},
    {N_("Move the chosen guide by 1, 10 or 0.1; choose the next one"), N_("Arrows, Shift, Alt; Tab, Shift + Tab")},
    {N_("Enter the place of a guide"), N_("Enter, Double Click")},
    {N_("Zoom at the pointer"), N_("Ctrl + Wheel")},
    {N_("Move the sheet"), N_("Space + Drag, Middle Button")},
};

class ShortcutGrid : public Gtk::Grid {
 public:
  ShortcutGrid() {
    set_row_spacing(4);
    set_column_spacing(24);
    set_margin(18);
    for (const MenuSection& section : MenuSections()) {
      if (section.title != nullptr) Heading(WithoutMnemonic(Tr(section.title)));
      for (const ActionKeys& entry : section.entries) {
        if (!ShownKey(entry).empty()) Add(WithoutMnemonic(Tr(entry.title)), ShownKey(entry));
      }
    }
    Heading(Tr("Canvas"));
    for (const Line& line : kCanvasLines) Add(Tr(line.what), Tr(line.key));
  }

 private:
  void Heading(const std::string& text) {
    auto* const label = Gtk::make_managed<Gtk::Label>(text);
    label->add_css_class("heading");
    label->set_xalign(0);
    label->set_margin_top(8);
    attach(*label, 0, row_++, 2, 1);
  }
  void Add(const std::string& what, const std::string& key) {
    auto* const left = Gtk::make_managed<Gtk::Label>(what);
    auto* const right = Gtk::make_managed<Gtk::Label>(key);
    left->set_xalign(0);
    right->set_xalign(0);
    right->add_css_class("dim-label");
    attach(*left, 0, row_);
    attach(*right, 1, row_++);
  }
  int row_ = 0;
};

}  // namespace

void ShowShortcuts(Gtk::Window& parent) {
  auto* const window = new Gtk::Window;
  window->set_title(Tr("Shortcuts"));
  window->set_default_size(460, 640);
  window->set_transient_for(parent);
  window->set_destroy_with_parent(true);
  auto* const scrolled = Gtk::make_managed<Gtk::ScrolledWindow>();
  scrolled->set_child(*Gtk::make_managed<ShortcutGrid>());
  window->set_child(*scrolled);
  CloseByEscape(*window);
  window->signal_hide().connect([window] { delete window; });
  window->show();
}

}  // namespace host
