#include "host/window/ExportDialog.h"

#include <gtkmm/button.h>
#include <gtkmm/checkbutton.h>
#include <gtkmm/grid.h>
#include <gtkmm/label.h>

#include "host/text/Localisation.h"
#include "host/window/EditorWindow.h"
#include "host/window/NumberField.h"

namespace host {

void ShowExportDialog(EditorWindow&) {}

}  // namespace host
