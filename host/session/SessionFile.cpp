#include "host/session/SessionFile.h"

#include "host/storage/DocumentFile.h"

namespace host {

bool SessionFile::IsChangedOutside() const { return !path_.empty() && !(FileStamp::Of(path_) == stamp_); }

Result<> SessionFile::Save(bool overwrite) {
  if (path_.empty()) {
    return Problem(N_("the document has no file yet: it needs a name to be saved"));
  }
  if (!overwrite && IsChangedOutside()) {
    return Problem(N_("\"%s\" was changed by another program since it was opened; it was left as it is"), {path_});
  }
  return SaveAs(std::string(path_));
}

Result<> SessionFile::SaveAs(const std::string& path) {
  if (const auto done = WriteDocument(document_, path); !done) return done.Why();
  const bool isNew = path != path_;
  path_ = path;
  stamp_ = FileStamp::Of(path);
  steps_.MarkSaved();
  if (isNew) observers_.Notify([](SessionObserver& observer) { observer.OnPathChanged(); });
  return {};
}

}  // namespace host
