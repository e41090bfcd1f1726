#include "kit/log/AKLog.h"

#include <cerrno>
#include <cstdarg>
#include <cstdio>

#include "kit/os/AKMainThread_p.h"

namespace {

constexpr unsigned int kLineBufferSize = 32768;

AKLogMessageProc sMessageProc = nullptr;
bool sThreadSafe = false;
unsigned int sMuteCount = 0;
char sLineBuffer[kLineBufferSize];

// Errno 1 to 32. The texts and numbers are fixed; the system's own catalogue is not asked.
constexpr const char* kErrnoNames[] = {
    "EPERM: Operation not permitted",
    "ENOENT: No such file or directory",
    "ESRCH: No such process",
    "EINTR: Interrupted system call",
    "EIO: Input/output error",
    "ENXIO: Device not configured",
    "E2BIG: Argument list too long",
    "ENOEXEC: Exec format error",
    "EBADF: Bad file descriptor",
    "ECHILD: No child processes",
    "EDEADLK: Resource deadlock avoided",
    "ENOMEM: Cannot allocate memory",
    "EACCES: Permission denied",
    "EFAULT: Bad address",
    "ENOTBLK: Block device required",
    "EBUSY: Device / Resource busy",
    "EEXIST: File exists",
    "EXDEV: Cross-device link",
    "ENODEV: Operation not supported by device",
    "ENOTDIR: Not a directory",
    "EISDIR: Is a directory",
    "EINVAL: Invalid argument",
    "ENFILE: Too many open files in system",
    "EMFILE: Too many open files",
    "ENOTTY: Inappropriate ioctl for device",
    "ETXTBSY: Text file busy",
    "EFBIG: File too large",
    "ENOSPC: No space left on device",
    "ESPIPE: Illegal seek",
    "EROFS: Read-only file system",
    "EMLINK: Too many links",
    "EPIPE: Broken pipe",
};
constexpr int kErrnoNameCount = sizeof(kErrnoNames) / sizeof(kErrnoNames[0]);
static_assert(kErrnoNameCount == 32);

const char* ErrnoName(int number) {
  return number >= 1 && number <= kErrnoNameCount ? kErrnoNames[number - 1] : "UNKNOWN";
}

bool HasText(const char* format) { return format != nullptr && format[0] != '\0'; }

bool MayDeliver() { return sMessageProc != nullptr && (sThreadSafe || AKIsMainThread()); }

// The shared buffer while a line is being built in it.
class LineBuilder {
 public:
  LineBuilder() { sLineBuffer[0] = '\0'; }

  /// False when the text did not fit or could not be formatted: what fitted stays.
  bool Append(const char* format, va_list arguments) {
    const unsigned int room = kLineBufferSize - length_;
    const int needed = std::vsnprintf(sLineBuffer + length_, room, format, arguments);
    if (needed < 0) {
      sLineBuffer[length_] = '\0';
      return false;
    }
    if (static_cast<unsigned int>(needed) >= room) {
      length_ = kLineBufferSize - 1;
      return false;
    }
    length_ += static_cast<unsigned int>(needed);
    return true;
  }

  AK_PRINTF_FORMAT(2, 3) bool Appendf(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    const bool complete = Append(format, arguments);
    va_end(arguments);
    return complete;
  }

  bool HasRoom() const { return length_ + 1 < kLineBufferSize; }

  static void Deliver() {
    if (sLineBuffer[0] == '\0') return;
    sMessageProc(sLineBuffer);
    // A host tells whose line it is by where the call returns to, so it must not become a jump.
    asm volatile("");
  }

 private:
  unsigned int length_ = 0;
};

void BuildStatusLine(LineBuilder* line, int status, int errorNumber, const char* format, va_list arguments) {
  line->Appendf("# %s %s %d", "AKLib", status < 0 ? "Error" : "Warning", status);
  if (HasText(format) && !(line->Appendf(": ") && line->Append(format, arguments))) return;
  if (line->HasRoom()) line->Appendf(".");
  if (errorNumber != 0 && line->HasRoom() && !line->Appendf(" (errno %d: %s).", errorNumber, ErrnoName(errorNumber))) {
    return;
  }
  if (line->HasRoom()) line->Appendf("\n");
}

void WriteStatusLine(int status, int errorNumber, const char* format, va_list arguments) {
  if (sMuteCount != 0 || !MayDeliver()) return;
  LineBuilder line;
  BuildStatusLine(&line, status, errorNumber, format, arguments);
  LineBuilder::Deliver();
}

}  // namespace

void AKSetCustomLogMessageProc(AKLogMessageProc proc, bool threadSafe) {
  sMessageProc = proc;
  sThreadSafe = proc != nullptr && threadSafe;
}

void AKLog(const char* format, ...) {
  if (!MayDeliver()) return;
  LineBuilder line;
  if (!HasText(format)) return;
  va_list arguments;
  va_start(arguments, format);
  line.Append(format, arguments);
  va_end(arguments);
  LineBuilder::Deliver();
}

void AKLogWarning(int status, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  WriteStatusLine(status, 0, format, arguments);
  va_end(arguments);
}

int AKLogError(int status, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  WriteStatusLine(status, 0, format, arguments);
  va_end(arguments);
  return status < 0 ? status : 0;
}

int AKLogErrorWithErrno(int status, const char* format, ...) {
  const int errorNumber = errno;
  va_list arguments;
  va_start(arguments, format);
  WriteStatusLine(status, errorNumber, format, arguments);
  va_end(arguments);
  errno = errorNumber;
  return status < 0 ? status : 0;
}

void AKLogErrorMute() { ++sMuteCount; }

unsigned int AKLogErrorUnmute() {
  if (sMuteCount != 0) --sMuteCount;
  return sMuteCount;
}

const char* AKGetStatusRawName(int) { return ""; }

void AKLogDebug(const char*, const char*, ...) {}
void AKAssert(const char*, const char*, int, bool, const char*) {}
void AKAssertWarning(const char*, const char*, int, bool, const char*) {}
