#include "host/pictures/PictureFile.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "host/pictures/BitmapPNG.h"
#include "host/storage/DocumentFile.h"

namespace host {

Result<> MakeFolder(const std::string& path) {
  if (path.empty() || mkdir(path.c_str(), 0777) == 0 || errno == EEXIST) return {};
  return Problem(N_("can't make folder \"%s\": %s"), {path, std::strerror(errno)});
}

Result<> SavePNG(const AGBitmap& bitmap, const std::string& path) {
  std::vector<unsigned char> png;
  if (EncodePNG(bitmap, &png)) return ReplaceFile(path, png.data(), png.size());
  return Problem(N_("can't encode the picture"));
}

}  // namespace host
