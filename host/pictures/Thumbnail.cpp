#include "host/pictures/Thumbnail.h"

#include <algorithm>
#include <vector>

#include "host/pictures/DocumentPicture.h"
#include "host/storage/WholeFiles.h"

namespace host {

Result<> SaveThumbnail(const Document& document, const std::string& path, double side) {
  PictureOptions options;
  options.scale = side / std::max(document.Page().width, document.Page().height);
  std::vector<unsigned char> file;
  if (const auto done = RenderPicture(document, PictureKind::kPNG, options, nullptr, &file); !done) return done.Why();
  return ReplaceFile(path, file.data(), file.size());
}

}  // namespace host
