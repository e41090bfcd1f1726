#include "host/storage/WholeFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>

#include "AKPlatform/AKBitmapPNG.h"
#include "CoreGraphics/CGBitmapContext.h"
#include "host/HostLog.h"
#include "kit/files/AKFileUtils.h"
#include "kit/streams/AKFileNumbers.h"
#include "kit/streams/AKFileReplacer.h"

namespace host {
namespace {

// 0 or an errno.
int ReadToEnd(int file, std::string* bytes) {
  char buffer[65536];
  for (;;) {
    const ssize_t count = read(file, buffer, sizeof(buffer));
    if (count == 0) return 0;
    if (count > 0) bytes->append(buffer, static_cast<std::size_t>(count));
    if (count < 0 && errno != EINTR) return errno;
  }
}

}  // namespace

int OpenRetrying(const std::string& path, int flags) {
  for (;;) {
    const int file = open(path.c_str(), flags | O_CLOEXEC);
    if (file >= 0 || errno != EINTR) return file;
  }
}

std::vector<std::string> FilesOf(const std::string& folder, const char* extension, std::error_code* error) {
  std::vector<std::string> files;
  std::filesystem::directory_iterator entry;
  do {
    entry = std::filesystem::directory_iterator(folder, *error);
  } while (*error == std::errc::interrupted);
  for (; !*error && entry != std::filesystem::directory_iterator(); entry.increment(*error)) {
    if (entry->path().extension() == extension) files.push_back(entry->path().string());
  }
  if (*error == std::errc::no_such_file_or_directory) error->clear();
  std::sort(files.begin(), files.end());
  return files;
}

FileStamp FileStamp::Of(const std::string& path) {
  struct stat info {};
  if (path.empty() || stat(path.c_str(), &info) != 0) return {};
  return {true, info.st_dev, info.st_ino, info.st_size, info.st_mtim.tv_sec, info.st_mtim.tv_nsec};
}

Result<> ReadWholeFile(const std::string& path, std::string* bytes) {
  bytes->clear();
  const int file = OpenRetrying(path, O_RDONLY);
  if (file < 0) {
    return Problem(N_("can't open \"%s\": %s"), {path, std::strerror(errno)});
  }
  const int reason = ReadToEnd(file, bytes);
  close(file);
  if (reason == 0) return {};
  return Problem(N_("can't read \"%s\": %s"), {path, std::strerror(reason)});
}

Result<> ReplaceFileBy(const std::string& path, const std::function<int(AKFile&)>& write,
                       const std::optional<std::string>& model) {
  const QuietLog quiet;
  AKFilePath target;
  AKFileUtils::GetFromSystemPath(path.c_str(), &target);
  AKFileReplacer replacer(target);
  if (model) {
    AKFilePath like;
    AKFileUtils::GetFromSystemPath(model->c_str(), &like);
    replacer.SetModel(like);
  }
  errno = 0;
  int status = replacer.Open();
  if (status == 0) status = write(replacer.File());
  if (status == 0) status = replacer.Commit();
  const int reason = errno;  // before the replacer cleans up
  if (status == 0) return {};
  const std::string text = reason != 0 ? std::strerror(reason) : "status " + std::to_string(status);
  return Problem(N_("can't write \"%s\": %s"), {path, text});
}

Result<> ReplaceFile(const std::string& path, const void* data, std::size_t size) {
  return ReplaceFileBy(path, [data, size](AKFile& file) { return AKFileWrite(file, data, size); });
}

Result<> MakeFolder(const std::string& path) {
  if (path.empty() || mkdir(path.c_str(), 0777) == 0 || errno == EEXIST) return {};
  return Problem(N_("can't make folder \"%s\": %s"), {path, std::strerror(errno)});
}

Result<> SavePNG(const AGBitmap& bitmap, const std::string& path) {
  std::vector<unsigned char> png;
  if (EncodePNG(bitmap, &png)) return ReplaceFile(path, png.data(), png.size());
  return Problem(N_("can't encode the picture"));
}

bool EncodePNG(const AGBitmap& bitmap, std::vector<unsigned char>* png) {
  png->clear();
  if (!bitmap.IsOpen()) return false;
  std::size_t byteCount = 0;
  std::unique_ptr<void, decltype(&std::free)> bytes(CGBitmapContextCopyPNG(bitmap.NativeContext(), &byteCount),
                                                    &std::free);
  if (!bytes) return false;
  const auto* first = static_cast<const unsigned char*>(bytes.get());
  png->assign(first, first + byteCount);
  return true;
}

}  // namespace host
