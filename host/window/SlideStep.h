// Makes one undo step of a burst of changes: a slide, a run of the wheel, a held arrow key.
//
// The step is opened by the first change. A slide ends with the release of its slider, however long it rests; any other
// burst when no change has come for a while. There is one burst at a time in the program.
//
// The rule for whatever is done while a step is open, be it a burst or a drag on the canvas: the step ends first, as if
// the button had been let go where the pointer is, and then it is done. Nothing is refused, nothing waits, and what the
// pointer does until it is really let go does nothing. Every command of a menu, a key or a panel that edits, copies,
// undoes, selects, saves or closes comes through End or Continue before it looks at the session.
#pragma once

#include <functional>
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
  /// Ends the burst, and the drag.
  static void End();

  /// A drag on a canvas begins, after End: `finish` is called once, unless the drag is over before. Null when it is.
  static void Drag(std::function<void()> finish);

  /// Bounds the changes of a slider by its press and release; those by keys and wheel stay a burst.
  static void Follow(Gtk::Scale& scale);
  /// True from the press to the release of a slider that is followed.
  static bool IsHeld(const Gtk::Scale& scale);
};

}  // namespace host
