#include "host/pictures/PictureFile.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>

#include "host/pictures/BitmapPNG.h"
#include "host/storage/DocumentFile.h"

namespace host {

bool MakeFolder(const std::string& path, std::string* error) {
  if (path.empty() || mkdir(path.c_str(), 0777) == 0 || errno == EEXIST) return true;
  *error = "can't make folder \"" + path + "\": " + std::strerror(errno);
  return false;
}

bool SavePNG(const AGBitmap& bitmap, const std::string& path, std::string* error) {
  std::vector<unsigned char> png;
  if (EncodePNG(bitmap, &png)) return ReplaceFile(path, png.data(), png.size(), error);
  *error = "can't encode the picture";
  return false;
}

}  // namespace host
