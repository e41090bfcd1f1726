#include "host/session/SessionFile.h"

#include "host/storage/DocumentFile.h"
#include "host/storage/FolderLock.h"

namespace host {

bool SessionFile::IsChangedOutside() const { return !path_.empty() && !(FileStamp::Of(path_) == stamp_); }

Result<> SessionFile::Save(bool overwrite) {
  if (path_.empty()) {
    return Problem(N_("the document has no file yet: it needs a name to be saved"));
  }
  const FolderLock lock(path_);  // what is found is still so when the file is replaced
  if (!overwrite && IsChangedOutside()) {
    return Problem(N_("\"%s\" was changed by another program since it was opened; it was left as it is"), {path_});
  }
  return Write(path_);
}

Result<> SessionFile::Write(const std::string& path) {
  if (const auto done = WriteDocument(document_, path); !done) return done.Why();
  stamp_ = FileStamp::Of(path);
  path_ = path;
  steps_.MarkSaved();
  return {};
}

Result<> SessionFile::SaveAs(const std::string& path) {
  const FolderLock lock(path);
  const bool isNew = path != path_;
  if (const auto done = Write(std::string(path)); !done) return done.Why();
  if (isNew) observers_.Notify([](SessionObserver& observer) { observer.OnPathChanged(); });
  return {};
}

}  // namespace host
