// Makes one undo step of a burst of changes: a slide, a run of the wheel, a held arrow key.
//
// The step is opened by the first change and ends when no other has come for a while, or when somebody else needs the
// history: undo, another kind of change, a press on the canvas. There is one burst at a time in the program.
#pragma once

#include <string>

namespace host {

class DocumentSession;

class SlideStep {
 public:
  /// To be called before each change. `what` tells bursts apart; another one begins a step of its own.
  static void Continue(DocumentSession* session, const std::string& what);
  static void End();
};

}  // namespace host
