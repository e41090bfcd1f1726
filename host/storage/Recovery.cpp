#include "host/storage/Recovery.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <ctime>
#include <filesystem>

#include "host/HostLog.h"
#include "host/storage/DocumentFile.h"
#include "host/storage/RecoveryFolder.h"
#include "host/storage/WholeFiles.h"
#include "kit/streams/AKFileChunk.h"
#include "kit/streams/AKFileNumbers.h"

namespace host {
namespace {

constexpr std::uint32_t kRecoverySignature = 0x48526376;  // "HRcv"
constexpr unsigned int kRecoveryVersion = 1;
constexpr const char* kExtension = ".akrecover";

struct Header {
  unsigned long long process = 0;
  unsigned long long start = 0;
  long long time = 0;
  std::string original;
};

std::string AbsolutePath(const std::string& path) {
  std::error_code error;
  const std::string absolute = path.empty() ? path : std::filesystem::absolute(path, error).string();
  return error ? path : absolute;
}

int WriteRecovery(AKFile& file, const Header& header, const Document& document) {
  AKFileChunk chunk{kRecoverySignature};
  int status = AKFileWriteChunkHeader(file, chunk);
  if (status == 0) status = AKFileWriteUInt32(file, kRecoveryVersion);
  if (status == 0) status = AKFileWriteUInt64(file, header.process);
  if (status == 0) status = AKFileWriteUInt64(file, header.start);
  if (status == 0) status = AKFileWriteSInt64(file, header.time);
  if (status == 0) status = WriteTextChunk(file, header.original);
  if (status == 0) status = WriteDocument(document, file, nullptr);
  return status == 0 ? AKFileWriteChunkComplete(file, chunk) : status;
}

bool ReadHeader(const AKFile& file, Header* header) {
  AKFileChunk chunk;
  unsigned int version = 0;
  return AKFileReadChunkHeader(file, &chunk) == 0 && chunk.signature == kRecoverySignature &&
         AKFileReadUInt32(file, &version) == 0 && version == kRecoveryVersion &&
         AKFileReadUInt64(file, &header->process) == 0 && AKFileReadUInt64(file, &header->start) == 0 &&
         AKFileReadSInt64(file, &header->time) == 0 && ReadTextChunk(file, &header->original);
}

// What killed programs left while they wrote. A file that is being written is locked.
void RemoveUnfinished(const std::string& folder) {
  std::error_code failed;
  for (const std::string& file : FilesOf(folder, "", &failed)) {
    if (!std::filesystem::path(file).filename().string().starts_with(".tmp_")) continue;
    const int unfinished = OpenRetrying(file, O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
    if (unfinished < 0) continue;
    if (flock(unfinished, LOCK_EX | LOCK_NB) == 0) unlink(file.c_str());
    close(unfinished);
  }
}

}  // namespace

Recovery::Recovery(const DocumentSession& session, double seconds)
    : session_(session), interval_(seconds), when_(std::chrono::steady_clock::now()) {
  if (!session.File().HasUnsavedChanges()) written_ = session.Steps().ChangeCount();
}

Recovery::~Recovery() { Remove(); }

void Recovery::Remove() {
  if (!file_.empty()) unlink(file_.c_str());
  file_.clear();
}

void Recovery::Update() {
  if (!session_.File().HasUnsavedChanges()) {
    Remove();
    written_ = session_.Steps().ChangeCount();
    return;
  }
  if (written_ == session_.Steps().ChangeCount()) return;
  // A document that was recovered is kept again at once: the file that it came from will be discarded.
  if (written_ && std::chrono::steady_clock::now() - when_ < interval_) return;
  UpdateNow();
}

void Recovery::UpdateNow() {
  if (!session_.File().HasUnsavedChanges() || written_ == session_.Steps().ChangeCount()) return;
  when_ = std::chrono::steady_clock::now();  // the time that writing takes is part of the interval
  if (Write()) written_ = session_.Steps().ChangeCount();
}

std::chrono::duration<double> Recovery::UntilDue() const {
  if (!session_.File().HasUnsavedChanges() || written_ == session_.Steps().ChangeCount()) return kNever;
  if (!written_) return std::chrono::duration<double>(0);
  const std::chrono::duration<double> passed = std::chrono::steady_clock::now() - when_;
  return std::max(interval_ - passed, std::chrono::duration<double>(0));
}

bool Recovery::Keep() {
  if (!session_.File().HasUnsavedChanges()) return true;
  const bool kept = written_ == session_.Steps().ChangeCount() || Write();
  file_.clear();
  return kept;
}

bool Recovery::Write() {
  const std::string folder = RecoveryFolder();
  std::error_code failed;
  std::filesystem::create_directories(folder, failed);
  const unsigned long long process = static_cast<unsigned long long>(getpid());
  const std::string stem =
      session_.File().Path().empty() ? "untitled" : std::filesystem::path(session_.File().Path()).stem().string();
  const std::string file =
      folder + "/" + stem + "-" + std::to_string(process) + "-" + std::to_string(session_.Serial()) + kExtension;
  if (folder.empty() || failed) return false;
  if (file != file_) Remove();
  const Header header{process, StartOfProcess(process), static_cast<long long>(std::time(nullptr)),
                      AbsolutePath(session_.File().Path())};
  const auto write = [&](AKFile& target) { return WriteRecovery(target, header, session_.Doc()); };
  if (!ReplaceFileBy(file, write, session_.File().Path())) return false;
  file_ = file;
  return true;
}

std::vector<RecoveryFile> FindRecoveries(std::vector<Problem>* unreadable) {
  const QuietLog quiet;
  std::vector<RecoveryFile> found;
  const std::string folder = RecoveryFolder();
  std::error_code failed;
  RemoveUnfinished(folder);
  const std::vector<std::string> files = FilesOf(folder, kExtension, &failed);
  if (failed && unreadable != nullptr) {
    unreadable->push_back(Problem(N_("can't read \"%s\": %s"), {folder, failed.message()}));
  }
  for (const std::string& file : files) {
    std::string bytes;
    if (const auto done = ReadWholeFile(file, &bytes); !done) {
      if (unreadable != nullptr) unreadable->push_back(done.Why());
      continue;
    }
    AKFile stream(bytes.data(), static_cast<unsigned int>(bytes.size()));
    Header header;
    if (stream.OpenForRead() != 0 || !ReadHeader(stream, &header)) continue;
    if (header.start != 0 && StartOfProcess(header.process) == header.start) continue;
    found.push_back({file, header.original, header.time});
  }
  std::sort(found.begin(), found.end(), [](const RecoveryFile& a, const RecoveryFile& b) {
    return a.time != b.time ? a.time > b.time : a.file < b.file;
  });
  return found;
}

Result<std::unique_ptr<DocumentSession>> OpenRecovery(const RecoveryFile& recovery) {
  const QuietLog quiet;
  std::string bytes;
  Header header;
  if (const auto done = ReadWholeFile(recovery.file, &bytes); !done) return done.Why();
  AKFile stream(bytes.data(), static_cast<unsigned int>(bytes.size()));
  unsigned long long start = 0;
  if (stream.OpenForRead() != 0 || !ReadHeader(stream, &header) || stream.GetPos(&start) != 0) {
    return Problem(N_("\"%s\" is no recovery file"), {recovery.file});
  }
  AKFile inner(bytes.data() + start, static_cast<unsigned int>(bytes.size() - start));
  inner.OpenForRead();
  auto document = ReadDocument(inner, recovery.file);
  if (!document) return document.Why();
  return DocumentSession::Restore(std::move(*document), header.original);
}

Result<> DiscardRecovery(const RecoveryFile& recovery) {
  if (unlink(recovery.file.c_str()) == 0) return {};
  return Problem(N_("can't remove \"%s\": %s"), {recovery.file, std::strerror(errno)});
}

}  // namespace host
