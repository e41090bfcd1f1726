// Rows of a label and a control, all labels as wide as each other.
#pragma once

#include <gtkmm/dropdown.h>
#include <gtkmm/grid.h>

namespace host {

class FormGrid : public Gtk::Grid {
 public:
  FormGrid();

  /// The label is also the control's name for those who cannot see it. The control outlives the grid or belongs to it.
  void Row(int row, const char* label, Gtk::Widget& control);
  /// Marks a row whose control stands for several values that differ.
  void ShowMixed(int row, bool mixed);
};

/// Selects an entry, or shows that several differ.
void ShowChoice(Gtk::DropDown* choice, unsigned int index, bool mixed);

}  // namespace host
