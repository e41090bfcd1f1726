// The tools beside the canvas: one to select, and one for each class that a bundle registered.
#pragma once

#include <gtkmm/box.h>
#include <gtkmm/togglebutton.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/window/canvas/CanvasView.h"

namespace host {

class ToolColumn : public Gtk::Box {
 public:
  /// The canvas outlives the column, and its tool is shown.
  explicit ToolColumn(CanvasView& canvas);

  /// The classes are others now.
  void UpdateClasses();

 private:
  void AddTool(const std::string& name, std::optional<AKClassID> classID);
  Gtk::Widget* MakeFace(const std::string& name, std::optional<AKClassID> classID);
  void ShowTool();
  /// The class that was chosen last, or the first one; none when there is none.
  std::optional<AKClassID> LastClass() const;

  CanvasView& canvas_;
  std::vector<std::pair<Gtk::ToggleButton*, std::optional<AKClassID>>> buttons_;
  std::optional<AKClassID> last_;
};

}  // namespace host
