#include "kit/streams/AKFileErrors.h"

#include <cerrno>

#include "kit/log/AKLog.h"
#include "kit/streams/AKFile.h"

namespace {

constexpr int kFirstStatus = kAKFileStatusNotOpened;

// By status, from -893 up to -881.
constexpr const char* kMessages[] = {
    "The file \"%s\" is not opened",
    "The file \"%s\" is already opened",
    "Can't open file \"%s\"",
    "Can't read in file \"%s\"",
    "Can't write to file \"%s\"",
    "Can't set position in file \"%s\"",
    "Can't get position in file \"%s\"",
    "Can't set size of file \"%s\"",
    "Can't get size of file \"%s\"",
    "Can't mmap on file \"%s\"",
    "Can't mmap on file (bad offset) \"%s\"",
    "Can't mmap on file (out of bounds) \"%s\"",
    "Data size or position too big in file \"%s\"",
};
static_assert(sizeof(kMessages) / sizeof(kMessages[0]) == kAKFileStatusTooBig - kFirstStatus + 1);

}  // namespace

int AKFileLogFailure(const AKFile& file, int status) {
  const char* const message = kMessages[status - kFirstStatus];
  if (file.IsMemoryStream()) return AKLogError(status, message, AKFileNameInMessages(file));
  return AKLogErrorWithErrno(status, message, AKFileNameInMessages(file));
}

int AKFileLogMissingBytes(const AKFile& file) {
  errno = 0;
  return AKFileLogFailure(file, kAKFileStatusReadFailed);
}

int AKFileLogPathFailure(const AKString& path, int status) {
  return AKLogErrorWithErrno(status, kMessages[status - kFirstStatus], path.CStr());
}

const char* AKFileNameInMessages(const AKFile& file) {
  return file.IsMemoryStream() ? "Memory Stream" : file.Path().Text().CStr();
}
