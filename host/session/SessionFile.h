// The link of a session to the file of its document.
#pragma once

#include <string>

#include "host/session/SessionSteps.h"
#include "host/storage/WholeFiles.h"

namespace host {

class SessionFile {
 public:
  SessionFile(Document& document, SessionSteps& steps, SessionObservers& observers)
      : document_(document), steps_(steps), observers_(observers) {}

  /// The file that the document came from, or goes to; `stamp` is its state then.
  void Link(const std::string& path, const FileStamp& stamp) {
    path_ = path;
    stamp_ = stamp;
  }
  /// Empty for a document that was never saved.
  const std::string& Path() const { return path_; }
  bool HasUnsavedChanges() const { return !steps_.Known().IsClean(); }
  /// True when the file was changed or removed by somebody else since it was opened or saved.
  bool IsChangedOutside() const;
  /// Writes to Path(). Refused when the file was changed outside, unless `overwrite` is set; of several programs that
  /// save at the same moment one wins, and the others are refused.
  Result<> Save(bool overwrite);
  /// The document belongs to the new path from then on.
  Result<> SaveAs(const std::string& path);

 private:
  Result<> Write(const std::string& path);

  Document& document_;
  SessionSteps& steps_;
  SessionObservers& observers_;
  std::string path_;
  FileStamp stamp_;
};

}  // namespace host
