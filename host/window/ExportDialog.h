// Exporting the page as a picture: kind, scale, transparency, quality, and a progress bar that can be stopped.
#pragma once

namespace host {

class EditorWindow;

void ShowExportDialog(EditorWindow& window);

}  // namespace host
