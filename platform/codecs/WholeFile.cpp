#include "platform/codecs/WholeFile.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>

#include "platform/codecs/Descriptor.h"

namespace platform {
namespace {

constexpr std::size_t kMaxTransfer = 1 << 30;  // the system takes no more than 2 GB at a time

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

}  // namespace

bool ReadWholeFile(const std::string& path, std::size_t headSize, bool (*isWanted)(const unsigned char*, std::size_t),
                   std::vector<unsigned char>* bytes) {
  bytes->clear();
  // Without O_NONBLOCK opening a pipe would wait for a writer.
  const Descriptor file(OpenRetrying(path.c_str(), O_RDONLY | O_NONBLOCK));
  struct stat status;
  if (!file.IsOpen() || ::fstat(file.Number(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
  const auto size = static_cast<std::size_t>(status.st_size);
  if (!ReadUpTo(file.Number(), std::min(headSize, size), bytes)) return false;
  return isWanted(bytes->data(), bytes->size()) && ReadUpTo(file.Number(), size, bytes);
}

}  // namespace platform
