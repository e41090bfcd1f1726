// The clipboard: objects as bytes, and back.
//
// A chunk "HClp" as docs/document-format.md has it.
#pragma once

#include <string>

#include "host/session/SessionObjects.h"

namespace host {

class SessionClipboard {
 public:
  SessionClipboard(Document& document, SessionSteps& steps, SessionSelection& selection, ActiveLayer& activeLayer,
                   SessionObjects& objects)
      : document_(document), steps_(steps), selection_(selection), activeLayer_(activeLayer), objects_(objects) {}

  /// Bytes that any session of this program can paste.
  std::string Copy(const ObjectIDs& ids) const;
  Result<> Cut(const ObjectIDs& ids, std::string* clipboard);
  /// In front on the active layer, moved by (dx, dy) but for placeholders, and selected.
  Result<> Paste(const std::string& clipboard, double dx, double dy);
  /// The same with the middle of their box at a point.
  Result<> PasteAt(const std::string& clipboard, const AGPoint& middle);
  Result<> Duplicate(const ObjectIDs& ids, double dx, double dy);

 private:
  Document& document_;
  SessionSteps& steps_;
  SessionSelection& selection_;
  ActiveLayer& activeLayer_;
  SessionObjects& objects_;
};

}  // namespace host
