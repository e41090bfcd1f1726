// How the user left the window: kept in "objecthost/window.ini" of the user's folder of settings, for the next start.
#pragma once

#include <set>
#include <string>

namespace host {

struct WindowSettings {
  int width = 1180;  ///< of a new window, pixels
  int height = 760;
  int panelWidth = 0;  ///< beside the canvas; at least what the panels need
  bool maximized = false;
  bool dark = false;
  bool grid = false;
  bool snap = false;
  bool snapToObjects = true;
  bool snapToGuides = true;
  bool snapping = true;  ///< at all
  bool guides = true;
  bool guidesLocked = false;
  bool rulers = true;
  std::set<std::string> closedPanels{"Page", "Caps, Joins, Nib", "Label"};  ///< by their English names

  /// Those of the program, read at the first use. A file that is missing or damaged gives what it can.
  static WindowSettings& Instance();
  /// Replaces the file whole. One that can't be written is told on the error output, once.
  void Save() const;
};

}  // namespace host
