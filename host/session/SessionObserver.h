// What views are told of an editing session; see DocumentObserver for the rules.
#pragma once

#include "host/model/DocumentObserver.h"

namespace host {

class SessionObserver : public DocumentObserver {
 public:
  virtual void OnSelectionChanged() {}
  /// A drag shows the selected objects elsewhere than they are, or no longer: SessionSelection::Shift is new.
  virtual void OnSelectionShifted() {}
  /// A step was made, undone or redone, or the document was saved: undo titles and the unsaved-changes state may be
  /// new.
  virtual void OnHistoryChanged() {}
  virtual void OnActiveLayerChanged() {}
  /// The document has another path.
  virtual void OnPathChanged() {}
};

}  // namespace host
