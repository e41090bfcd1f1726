#include "host/window/Toolbar.h"

#include <gtkmm/box.h>
#include <gtkmm/separator.h>

#include <string>
#include <vector>

#include "host/text/Localisation.h"
#include "host/window/Menus.h"
#include "host/window/widgets/Tip.h"

namespace host {
namespace {

// An entry "win.undo" has the icon "objecthost-undo-symbolic".
const std::vector<std::vector<const char*>>& Groups() {
  static const std::vector<std::vector<const char*>> groups = {
      {"undo", "redo"},
      {"zoom-out", "zoom-in", "zoom-fit"},
      {"align-left", "align-center", "align-right"},
      {"align-top", "align-middle", "align-bottom"},
      {"to-front", "forward", "backward", "to-back"},
      {"group", "ungroup"},
  };
  return groups;
}

Gtk::Button* NewButton(const std::string& name) {
  auto* const button = Gtk::make_managed<Gtk::Button>();
  button->set_icon_name("objecthost-" + name + "-symbolic");
  button->set_focus_on_click(false);
  button->set_has_frame(false);
  SetTip(button, EntryTip("win." + name));
  return button;
}

}  // namespace

Toolbar::Toolbar() {
  set_policy(Gtk::PolicyType::EXTERNAL, Gtk::PolicyType::NEVER);
  auto* const row = Gtk::make_managed<Gtk::Box>(Gtk::Orientation::HORIZONTAL, 0);
  row->add_css_class("toolbar");
  set_focusable(false);
  GiveName(row, Tr("Toolbar"));
  for (const auto& names : Groups()) {
    if (row->get_first_child() != nullptr) {
      row->append(*Gtk::make_managed<Gtk::Separator>(Gtk::Orientation::VERTICAL));
    }
    for (const char* name : names) {
      Gtk::Button* const button = NewButton(name);
      row->append(*button);
      if (names == Groups().front()) {
        (undo_ == nullptr ? undo_ : redo_) = button;
        button->signal_clicked().connect([button, name] { button->activate_action(std::string("win.") + name); });
      } else {
        button->set_action_name(std::string("win.") + name);
      }
    }
  }
  set_child(*row);
}

void Toolbar::ShowSteps(const SessionSteps& steps) {
  undo_->set_sensitive(steps.Known().CanUndo());
  redo_->set_sensitive(steps.Known().CanRedo());
  SetTip(undo_, EntryTip("win.undo", steps.UndoTitle()));
  SetTip(redo_, EntryTip("win.redo", steps.RedoTitle()));
}

}  // namespace host
