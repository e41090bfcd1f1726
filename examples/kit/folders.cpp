// Paths, folders, and files that are replaced whole or not at all.
#include <cstdio>

#include "kit/files/AKDirectoryParser.h"
#include "kit/files/AKFilePathArray.h"
#include "kit/files/AKFileUtils.h"
#include "kit/files/AKFileUtilsMacOS.h"
#include "kit/files/AKStandardFolders.h"
#include "kit/streams/AKFileContent.h"
#include "kit/streams/AKFileNumbers.h"
#include "kit/streams/AKFileReplacer.h"

int main() {
  AKFilePath path("drawings/../pages/star.akd");
  path.Simplify();
  std::printf("%s: %s\n", path.Text().CStr(), path.FileNameWithoutExtension().CStr());  // prints: pages/star.akd: star
  path.SetExtension("png");
  std::printf("%s %d\n", path.FileName().CStr(), path.HasExtension("PNG"));  // prints: star.png 1

  AKFilePath folder;
  AKFileUtils::CreateUnusedFolderInTemporaryDir(&folder);
  const AKFilePath page = folder / AKFilePath("page.txt");

  // Until Commit has succeeded, whoever reads the file sees the old one.
  AKFileReplacer replacer(page);
  int status = replacer.Open();
  if (status == 0) status = AKFileWrite(replacer.File(), "seven", 5);
  std::printf("%d before, ", AKFileUtils::Exists(page));
  if (status == 0) status = replacer.Commit();
  std::printf("%d after (%d)\n", AKFileUtils::IsFile(page), status);  // prints: 0 before, 1 after (0)

  AKString text;
  AKFileLoadContentToString(page, &text);
  std::printf("%s\n", text.CStr());  // prints: seven

  AKDirectoryParser parser;
  parser.Parse(folder, false);
  const AKFilePathArray& files = parser.Files();
  std::printf("%u file, %s\n", files.Count(), files[0].FileName().CStr());  // prints: 1 file, page.txt
  AKFileUtils::RemoveFile(page);
  AKFileUtils::RemoveFolder(folder);

  // Where things belong. Nothing has to be there.
  std::printf("%s\n", AKStandardFolderGetName(AKStandardFolder::kPictures).CStr());  // prints: Pictures
  std::printf("%d\n", AKFileUtilsMacOS::GetApplicationBundleResourceFilePath("logo.png").IsAbsolute());  // prints: 1
}
