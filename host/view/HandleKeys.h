// Handles of the selection by the keyboard: which one has the arrow keys, and what they do to it.
//
// A handle of a side or corner goes where the arrow points, the one to turn and that of a linear gradient clockwise
// with right and down, a property's along its track by hundredths of its range.
#pragma once

#include <string>

#include "host/view/SelectionFrame.h"

namespace host {

class HandleKeys {
 public:
  bool HasTaken() const { return taken_ != Handle::kNone; }
  /// The handle that was taken, none when there is none any more.
  Handle Taken(const SelectionFrame& frame, const ViewTransform& view) const;
  /// Takes the next handle, or the one before; the first or the last one when none was taken. False without handles.
  bool TakeNext(const SelectionFrame& frame, const ViewTransform& view, bool backwards);
  /// False when none was taken.
  bool LetGo();

 private:
  Handle taken_ = Handle::kNone;
};

/// Moves a handle of what is selected by so many map units, degrees or hundredths; a side stops before the opposite
/// one.
Result<> MoveHandle(DocumentSession* session, Handle handle, const AGPoint& by);

/// "Lower right corner", translated.
std::string NameOf(Handle handle);

}  // namespace host
