// Preloaded into a program: lets the n-th of its calls for files go wrong, or writes all of them down.
//
// FAIL_AT=N counts from 0; FAIL_HOW says what becomes of that call: the number of an error, "short" for a part of what
// was asked, "kill" for the end of the program instead of it, "torn" for its end after half of what is written.
// FAIL_FOR_GOOD=1 does it to all from there on; EINTR then comes before each call once. FAIL_REPORT=FILE gets the name
// of each call, a line each, and FAIL_LOG=FILE what changed the disk (see Log). FAIL_CLOCK=1 lets the clock of the day
// jump an hour to and fro. The programs that it starts are left alone.
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <iterator>
#include <string>

namespace {

std::atomic<long> sCount{0};
long sFailAt = -1;
bool sForGood = false;
char sHow[16];
bool sActive = false;
int sReport = -1;
int sLog = -1;
bool sJumps = false;

int OpenQuietly(const char* variable) {
  const char* path = std::getenv(variable);
  if (path == nullptr) return -1;
  const auto file = static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, O_WRONLY | O_CREAT | O_APPEND, 0600));
  const auto high = static_cast<int>(syscall(SYS_fcntl, file, F_DUPFD_CLOEXEC, 500));
  syscall(SYS_close, file);
  return high;
}

void WriteQuietly(int file, const std::string& text) {
  for (std::size_t done = 0; done < text.size();) {
    const long put = syscall(SYS_write, file, text.data() + done, text.size() - done);
    if (put <= 0) std::abort();
    done += static_cast<std::size_t>(put);
  }
}

__attribute__((constructor)) void Start() {
  const char* at = std::getenv("FAIL_AT");
  const char* how = std::getenv("FAIL_HOW");
  sFailAt = at == nullptr ? -1 : std::atol(at);
  if (how != nullptr) std::strncpy(sHow, how, sizeof(sHow) - 1);
  sForGood = std::getenv("FAIL_FOR_GOOD") != nullptr;
  sReport = OpenQuietly("FAIL_REPORT");
  sLog = OpenQuietly("FAIL_LOG");
  sJumps = std::getenv("FAIL_CLOCK") != nullptr;
  for (const char* name :
       {"LD_PRELOAD", "FAIL_AT", "FAIL_FOR_GOOD", "FAIL_HOW", "FAIL_REPORT", "FAIL_LOG", "FAIL_CLOCK"}) {
    unsetenv(name);
  }
  sActive = true;
}

// What a full disk refuses.
bool TakesRoom(const char* name) {
  static const char* const names[] = {"create", "write", "pwrite", "fsync", "ftruncate", "rename", "close"};
  return std::any_of(std::begin(names), std::end(names), [&](const char* n) { return std::strcmp(n, name) == 0; });
}

bool Is(const char* how) { return std::strcmp(sHow, how) == 0; }

// Whether the call goes on as if nothing were; else errno says how it failed, or `*size` how much of it is done.
bool Passes(const char* name, std::size_t* size = nullptr) {
  if (!sActive) return true;
  const long number = sCount++;
  if (sReport >= 0) WriteQuietly(sReport, std::string(name) + "\n");
  if (sFailAt < 0 || number < sFailAt || (number > sFailAt && !sForGood)) return true;
  if (Is("kill") || (Is("torn") && size == nullptr)) raise(SIGKILL);
  if (Is("short") || Is("torn")) {
    if (size != nullptr && *size > 1) *size /= 2;
    return true;
  }
  const int error = std::atoi(sHow);
  // Whoever can't remove what was begun has to leave it.
  if (std::strcmp(name, "unlink") == 0 || ((error == ENOSPC || error == EDQUOT) && !TakesRoom(name))) return true;
  if (error == EINTR && (number - sFailAt) % 2 != 0) return true;
  errno = error;
  return false;
}

void EndIfTorn() {
  if (Is("torn") && sCount == sFailAt + 1) raise(SIGKILL);
}

// "create INODE PATH", "write INODE OFFSET SIZE" and the bytes, "size INODE SIZE", "sync INODE", "rename PATH" and on
// the next line its new one, "remove PATH"; paths are absolute. Each ends with a newline.
void Log(const std::string& line) {
  if (sLog >= 0) WriteQuietly(sLog, line + "\n");
}

std::string InodeOf(int file) {
  struct stat status {};
  return syscall(SYS_fstat, file, &status) == 0 ? std::to_string(status.st_ino) : "0";
}

std::string PathOf(int folder, const char* path) {
  if (path[0] == '/') return path;
  char text[PATH_MAX] = "";
  const std::string link = folder == AT_FDCWD ? "/proc/self/cwd" : "/proc/self/fd/" + std::to_string(folder);
  const ssize_t size = readlink(link.c_str(), text, sizeof(text) - 1);
  return std::string(text, size < 0 ? 0 : static_cast<std::size_t>(size)) + "/" + path;
}

// What the kernel makes up is read whole or not at all.
bool IsKernels(const char* path) { return std::strncmp(path, "/proc/", 6) == 0; }

int Open(int folder, const char* path, int flags, mode_t mode) {
  if (!IsKernels(path) && !Passes((flags & O_CREAT) != 0 ? "create" : "open")) return -1;
  const bool makes = sLog >= 0 && (flags & O_CREAT) != 0 && syscall(SYS_faccessat, folder, path, F_OK) != 0;
  const int reason = errno;
  const auto file = static_cast<int>(syscall(SYS_openat, folder, path, flags, mode));
  if (file < 0 || sLog < 0) return file;
  errno = reason;
  if (makes) Log("create " + InodeOf(file) + " " + PathOf(folder, path));
  if ((flags & O_TRUNC) != 0) Log("size " + InodeOf(file) + " 0");
  return file;
}

void LogWrite(int file, const void* data, off_t at, ssize_t put) {
  if (sLog < 0 || put < 0 || at < 0) return;
  Log("write " + InodeOf(file) + " " + std::to_string(at) + " " + std::to_string(put));
  Log(std::string(static_cast<const char*>(data), static_cast<std::size_t>(put)));
}

std::FILE* OpenStream(const char* path, const char* mode) {
  static const auto next = reinterpret_cast<std::FILE* (*)(const char*, const char*)>(dlsym(RTLD_NEXT, "fopen"));
  return IsKernels(path) || Passes(mode[0] == 'r' ? "open" : "create") ? next(path, mode) : nullptr;
}

std::time_t Jump() { return sJumps && sCount++ % 2 != 0 ? 3600 : 0; }

}  // namespace

#pragma GCC visibility push(default)
extern "C" {

#define OPENERS(open, openat, fopen)                         \
  int open(const char* path, int flags, ...) {               \
    va_list list;                                            \
    va_start(list, flags);                                   \
    const mode_t mode = va_arg(list, mode_t);                \
    va_end(list);                                            \
    return Open(AT_FDCWD, path, flags, mode);                \
  }                                                          \
  int openat(int folder, const char* path, int flags, ...) { \
    va_list list;                                            \
    va_start(list, flags);                                   \
    const mode_t mode = va_arg(list, mode_t);                \
    va_end(list);                                            \
    return Open(folder, path, flags, mode);                  \
  }                                                          \
  std::FILE* fopen(const char* path, const char* mode) { return OpenStream(path, mode); }

OPENERS(open, openat, fopen)
OPENERS(open64, openat64, fopen64)

ssize_t read(int file, void* data, std::size_t size) {
  return Passes("read", &size) ? syscall(SYS_read, file, data, size) : -1;
}

ssize_t pread(int file, void* data, std::size_t size, off_t at) {
  return Passes("pread", &size) ? syscall(SYS_pread64, file, data, size, at) : -1;
}

ssize_t pread64(int file, void* data, std::size_t size, off64_t at) { return pread(file, data, size, at); }

ssize_t write(int file, const void* data, std::size_t size) {
  if (file == STDERR_FILENO) return syscall(SYS_write, file, data, size);
  if (!Passes("write", &size)) return -1;
  const off_t at = sLog < 0 ? -1 : lseek(file, 0, SEEK_CUR);
  const ssize_t put = syscall(SYS_write, file, data, size);
  LogWrite(file, data, at, put);
  EndIfTorn();
  return put;
}

// The C++ library's streams, which carry a part on by themselves.
ssize_t writev(int file, const iovec* parts, int count) {
  return Passes("write") ? syscall(SYS_writev, file, parts, Is("short") ? std::min(count, 1) : count) : -1;
}

ssize_t pwrite(int file, const void* data, std::size_t size, off_t at) {
  if (!Passes("pwrite", &size)) return -1;
  const ssize_t put = syscall(SYS_pwrite64, file, data, size, at);
  LogWrite(file, data, at, put);
  EndIfTorn();
  return put;
}

ssize_t pwrite64(int file, const void* data, std::size_t size, off64_t at) { return pwrite(file, data, size, at); }

int fsync(int file) {
  if (!Passes("fsync")) return -1;
  const auto result = static_cast<int>(syscall(SYS_fsync, file));
  if (result == 0) Log("sync " + InodeOf(file));
  return result;
}

int ftruncate(int file, off_t size) {
  if (!Passes("ftruncate")) return -1;
  const auto result = static_cast<int>(syscall(SYS_ftruncate, file, size));
  if (result == 0) Log("size " + InodeOf(file) + " " + std::to_string(size));
  return result;
}

int ftruncate64(int file, off64_t size) { return ftruncate(file, size); }

int renameat(int fromFolder, const char* from, int toFolder, const char* to) {
  if (!Passes("rename")) return -1;
  const auto result = static_cast<int>(syscall(SYS_renameat, fromFolder, from, toFolder, to));
  if (result == 0) Log("rename " + PathOf(fromFolder, from) + "\n" + PathOf(toFolder, to));
  return result;
}

int rename(const char* from, const char* to) { return renameat(AT_FDCWD, from, AT_FDCWD, to); }

int unlinkat(int folder, const char* path, int flags) {
  if (!Passes("unlink")) return -1;
  const auto result = static_cast<int>(syscall(SYS_unlinkat, folder, path, flags));
  if (result == 0) Log("remove " + PathOf(folder, path));
  return result;
}

int unlink(const char* path) { return unlinkat(AT_FDCWD, path, 0); }

void* mmap(void* at, std::size_t size, int protection, int flags, int file, off_t offset) {
  if (file >= 0 && !Passes("mmap")) return MAP_FAILED;
  return reinterpret_cast<void*>(syscall(SYS_mmap, at, size, protection, flags, file, offset));
}

void* mmap64(void* at, std::size_t size, int protection, int flags, int file, off64_t offset) {
  return mmap(at, size, protection, flags, file, offset);
}

// A close that fails has closed all the same.
int close(int file) {
  const bool passes = Passes("close");
  const int reason = errno;
  const auto result = static_cast<int>(syscall(SYS_close, file));
  if (!passes) errno = reason;
  return passes ? result : -1;
}

int flock(int file, int operation) {
  return Passes("flock") ? static_cast<int>(syscall(SYS_flock, file, operation)) : -1;
}

ssize_t getrandom(void* data, std::size_t size, unsigned int flags) {
  return Passes("getrandom", &size) ? syscall(SYS_getrandom, data, size, flags) : -1;
}

int clock_gettime(clockid_t clock, timespec* time) {
  const auto result = static_cast<int>(syscall(SYS_clock_gettime, clock, time));
  if (clock == CLOCK_REALTIME) time->tv_sec += Jump();
  return result;
}

std::time_t time(std::time_t* target) {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  if (target != nullptr) *target = now.tv_sec;
  return now.tv_sec;
}

}  // extern "C"
#pragma GCC visibility pop
