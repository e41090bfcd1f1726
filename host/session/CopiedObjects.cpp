#include "host/session/CopiedObjects.h"

#include "host/HostLog.h"
#include "host/storage/DocumentFile.h"

namespace host {

Result<std::unique_ptr<DocumentSession>> CopiedObjects::Open() const {
  auto document = std::make_unique<Document>(page_);
  document->SetPage(page_, background_);
  auto session = std::make_unique<DocumentSession>(std::move(document));
  if (const auto done = session->Clipboard().Paste(bytes_, 0, 0); !done) return done.Why();
  return session;
}

Result<std::string> CopiedObjects::AsDocument() const {
  const auto session = Open();
  if (!session) return session.Why();
  AKFile stream(AKFile::kModeMemory);
  const void* data = nullptr;
  unsigned long long size = 0;
  std::optional<Problem> unwritable;
  if (stream.CreateForReadWrite() != 0 || WriteDocument((*session)->Doc(), stream, &unwritable) != 0 ||
      stream.GetMemoryStreamDataPtr(&data, &size) != 0) {
    return unwritable.value_or(Problem(N_("the objects can't be copied")));
  }
  return std::string(static_cast<const char*>(data), static_cast<std::size_t>(size));
}

Result<std::string> CopiedObjects::AsPicture(PictureKind kind) const {
  const auto session = Open();
  if (!session) return session.Why();
  const Document& document = (*session)->Doc();
  PictureOptions options;
  options.transparent = true;
  AGRect box;
  if (!GetPictureBox(document, (*session)->Selection().IDs(), &box)) return Problem(N_("there is no object to copy"));
  options.area = box;
  std::vector<unsigned char> file;
  // An object that does not draw itself is missing, and the rest is there.
  const auto done = RenderPicture(document, kind, options, nullptr, &file);
  if (!done && file.empty()) return done.Why();
  return std::string(file.begin(), file.end());
}

Result<std::string> CopiedFromDocument(const std::string& file) {
  const QuietLog quiet;
  AKFile stream(file.data(), static_cast<unsigned int>(file.size()));
  stream.OpenForRead();
  auto document = ReadDocument(stream, "");
  if (!document) return Problem(N_("there is nothing on the clipboard that can be pasted"));
  DocumentSession session(std::move(*document));
  session.Selection().SelectAll();
  std::string bytes = session.Selection().IsEmpty() ? "" : session.Clipboard().Copy(session.Selection().IDs());
  if (bytes.empty()) return Problem(N_("there is nothing on the clipboard that can be pasted"));
  return bytes;
}

}  // namespace host
