#include "kit/streams/AKFileContent.h"

#include <algorithm>
#include <cerrno>

#include "kit/files/AKFileUtils.h"
#include "kit/files/AKFileUtilsMacOS.h"
#include "kit/streams/AKFileErrors.h"
#include "kit/streams/AKFileReplacer.h"

namespace {

constexpr unsigned long long kMaxTextSize = AKSharedBytes::kMaxLength;
constexpr unsigned long long kFirstPiece = 4096;

int LoadBytes(const AKFile& file, AKString* text) {
  unsigned long long size = 0;
  if (const int status = file.GetFileInfo(&size, nullptr, nullptr); status != 0) return status;
  if (const int status = file.SetPos(0); status != 0) return status;
  // The size is a hint: files that the system makes up as they are read tell 0, or more than there is.
  for (unsigned long long length = 0;;) {
    errno = 0;
    const unsigned long long room = length == 0 ? std::max(size + 1, kFirstPiece) : 2 * length;
    if (length == kMaxTextSize || size > kMaxTextSize) return AKFileLogFailure(file, kAKFileStatusTooBig);
    text->Resize(static_cast<unsigned int>(std::min(room, kMaxTextSize)));
    unsigned long long got = 0;
    const int status = file.ReadUpTo(text->MutableData() + length, text->Length() - length, &got);
    length += got;
    if (status != 0 || length < text->Length()) {
      text->Resize(static_cast<unsigned int>(length));
      return status;
    }
  }
}

}  // namespace

int AKFileLoadContentToString(const AKFile& file, AKString* text) {
  text->Free();
  int status = file.CheckIsOpenedForRead();
  if (status == 0) status = LoadBytes(file, text);
  if (status != 0) text->Free();
  text->RemoveTrailingZeros();
  return status;
}

int AKFileLoadContentToString(const AKFilePath& path, AKString* text) {
  text->Free();
  AKFile file(path);
  if (const int status = file.OpenForRead(); status != 0) return status;
  return AKFileLoadContentToString(file, text);
}

int AKFileSaveContentOfString(AKFile& file, const AKString& text) {
  if (const int status = file.CheckIsOpenedForWrite(); status != 0) return status;
  if (const int status = file.SetPos(0); status != 0) return status;
  return file.Write(text.CStr(), text.Length());
}

int AKFileSaveContentOfString(const AKFilePath& path, const AKString& text) {
  AKFileReplacer replacer(path);
  if (const int status = replacer.Open(); status != 0) return status;
  if (const int status = AKFileSaveContentOfString(replacer.File(), text); status != 0) return status;
  return replacer.Commit();
}

int AKFileLoadContentToStringFromResources(const AKString& name, AKString* text) {
  text->Free();
  const AKFilePath path = AKFileUtilsMacOS::GetApplicationBundleResourceFilePath(name);
  if (AKFileUtils::IsFile(path) && AKFileLoadContentToString(path, text) == 0) return 0;
  return AKLogError(kAKFileStatusResourceMissing, "Can't find resource \"%s\"", name.CStr());
}
