#include "platform/codecs/WholeFile.h"

#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace platform {
namespace {

constexpr int kMaxNameAttempts = 100;
constexpr std::size_t kMaxTransfer = 1 << 30;  // the system takes no more than 2 GB at a time

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() { Close(); }

  bool IsOpen() const { return number_ >= 0; }
  int Number() const { return number_; }
  /// False when the system reports a late failure to write.
  bool Close() {
    const int number = number_;
    number_ = -1;
    return number < 0 || ::close(number) == 0;
  }

 private:
  int number_;
};

bool ReadUpTo(int descriptor, std::size_t size, std::vector<unsigned char>* bytes) {
  std::size_t done = bytes->size();
  bytes->resize(std::max(size, done));
  while (done < size) {
    const ssize_t count = ::read(descriptor, bytes->data() + done, std::min(size - done, kMaxTransfer));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    if (count == 0) break;  // the file has become shorter
    done += static_cast<std::size_t>(count);
  }
  bytes->resize(done);
  return true;
}

bool WriteAll(int descriptor, const void* data, std::size_t size) {
  const auto* bytes = static_cast<const unsigned char*>(data);
  while (size > 0) {
    const ssize_t count = ::write(descriptor, bytes, std::min(size, kMaxTransfer));
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    bytes += count;
    size -= static_cast<std::size_t>(count);
  }
  return true;
}

std::string FollowLinks(const std::string& path) {
  const std::unique_ptr<char, decltype(&std::free)> resolved(::realpath(path.c_str(), nullptr), &std::free);
  return resolved == nullptr ? path : resolved.get();
}

std::string TemporaryBeside(const std::string& path) {
  unsigned long long number = 0;
  if (::getrandom(&number, sizeof(number), 0) != sizeof(number)) number = static_cast<unsigned long long>(::getpid());
  char name[32];
  std::snprintf(name, sizeof(name), ".tmp_%016llX", number);
  const std::size_t slash = path.rfind('/');
  return (slash == std::string::npos ? std::string() : path.substr(0, slash + 1)) + name;
}

int CreateBeside(const std::string& target, std::string* path) {
  for (int attempt = 0; attempt < kMaxNameAttempts; ++attempt) {
    *path = TemporaryBeside(target);
    const int descriptor = ::open(path->c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
    if (descriptor >= 0 || (errno != EEXIST && errno != EINTR)) return descriptor;
  }
  return -1;
}

bool WriteInPlace(const std::string& path, const void* data, std::size_t size) {
  Descriptor file(::open(path.c_str(), O_WRONLY | O_CLOEXEC));
  return file.IsOpen() && WriteAll(file.Number(), data, size) && file.Close();
}

}  // namespace

bool ReadWholeFile(const std::string& path, std::size_t headSize, bool (*isWanted)(const unsigned char*, std::size_t),
                   std::vector<unsigned char>* bytes) {
  bytes->clear();
  // Without O_NONBLOCK opening a pipe would wait for a writer.
  const Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status;
  if (!file.IsOpen() || ::fstat(file.Number(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
  const auto size = static_cast<std::size_t>(status.st_size);
  if (!ReadUpTo(file.Number(), std::min(headSize, size), bytes)) return false;
  return isWanted(bytes->data(), bytes->size()) && ReadUpTo(file.Number(), size, bytes);
}

bool ReplaceWholeFile(const std::string& path, const void* data, std::size_t size) {
  const std::string target = FollowLinks(path);
  struct stat status;
  const bool exists = ::stat(target.c_str(), &status) == 0;
  if (!exists && errno != ENOENT) return false;
  if (exists && !S_ISREG(status.st_mode)) return WriteInPlace(target, data, size);
  // Renaming needs no right to write to the old file; somebody who took that right away meant it.
  if (exists && ::access(target.c_str(), W_OK) != 0) return false;

  std::string temporary;
  Descriptor file(CreateBeside(target, &temporary));
  if (!file.IsOpen()) return false;
  const bool written = (!exists || ::fchmod(file.Number(), status.st_mode & 07777) == 0) &&
                       WriteAll(file.Number(), data, size) && ::fsync(file.Number()) == 0 && file.Close() &&
                       ::rename(temporary.c_str(), target.c_str()) == 0;
  if (!written) ::unlink(temporary.c_str());
  return written;
}

}  // namespace platform
