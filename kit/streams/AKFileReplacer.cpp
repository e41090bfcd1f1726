#include "kit/streams/AKFileReplacer.h"

#include <cerrno>

#include "kit/files/AKFileUtils.h"
#include "kit/streams/AKFileErrors.h"
#include "kit/streams/AKFileTarget_p.h"

AKFileReplacer::AKFileReplacer(const AKFilePath& path) : path_(path), target_(std::make_unique<AKFileTarget>()) {}

AKFileReplacer::~AKFileReplacer() {
  if (!file_.has_value()) return;
  const int reason = errno;
  file_->CloseDisk(target_->What() == AKFileTarget::Kind::kOther);
  errno = reason;
}

int AKFileReplacer::Open() {
  if (file_.has_value()) return AKFileLogFailure(*file_, kAKFileStatusAlreadyOpened);
  errno = 0;
  if (!target_->Find(AKFileUtils::GetAsSystemPath(path_).CStr())) {
    return AKFileLogPathFailure(path_.Text(), kAKFileStatusOpenFailed);
  }
  if (target_->What() == AKFileTarget::Kind::kOther) {
    file_.emplace(path_);
    return file_->CreateForReadWrite();
  }
  if (model_.has_value()) target_->SetModel(AKFileUtils::GetAsSystemPath(*model_).CStr());
  const int descriptor = target_->Stage();
  if (descriptor < 0) return AKFileLogPathFailure(path_.Text(), kAKFileStatusOpenFailed);
  file_.emplace(path_);
  file_->AttachDescriptor(descriptor, AKFile::kFlagRead | AKFile::kFlagWrite);
  return 0;
}

int AKFileReplacer::Commit() {
  if (!file_.has_value()) return AKFileLogPathFailure(path_.Text(), kAKFileStatusNotOpened);
  if (target_->What() == AKFileTarget::Kind::kOther) return file_->Close();
  if (const int synced = file_->Sync(); synced != 0) {
    const int reason = errno;
    file_->CloseDisk(false);
    errno = reason;
    return synced;
  }
  if (const int closed = file_->Close(); closed != 0) return closed;
  auto next = std::make_unique<AKFileTarget>();  // before anything is replaced: memory may lack
  errno = 0;
  const bool done = target_->Put();
  file_.reset();
  if (!done) return AKFileLogPathFailure(path_.Text(), kAKFileStatusWriteFailed);
  target_ = std::move(next);
  return 0;
}
