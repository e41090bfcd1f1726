// Makes one undo step of a burst of changes: a slide, a run of the wheel, a held arrow key.
//
// The step is opened by the first change. A slide ends with the release of its slider, however long it rests; any other
// burst when no change has come for a while. Both end when somebody else needs the history: undo, another kind of
// change, a press on the canvas. There is one burst at a time in the program.
#pragma once

#include <string>

namespace Gtk {
class Scale;
}

namespace host {

class DocumentSession;

class SlideStep {
 public:
  /// To be called before each change. `what` tells bursts apart; another one begins a step of its own.
  static void Continue(DocumentSession* session, const std::string& what);
  static void End();

  /// Bounds the changes of a slider by its press and release; those by keys and wheel stay a burst.
  static void Follow(Gtk::Scale& scale);
};

}  // namespace host
