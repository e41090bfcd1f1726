// AKFileReplacer: replaces a file whole or not at all.
//
// The new content is written to a temporary file beside the target, forced to the disk and renamed over it. Until
// Commit succeeds the old file stays as it is, byte for byte; a replacer that dies without that deletes what it wrote.
// A program that is killed leaves the temporary file, ".tmp_" and 16 hexadecimal digits; the next replacement of the
// same file removes it. The folder is not read.
//
// The new file has the old one's owner, group, permissions, access control list and extended attributes as far as the
// user may give them, and never lets in anybody whom the old one did not (AKFileAttributes_p.h); set-user-ID and
// set-group-ID bits go. Without an old file it has what creating gives. A link is followed, also one that leads nowhere
// yet: the file that it leads to is replaced or created. Other hard links to the old file keep the old content.
//
// Where the folder lets no file be created or renamed, and the old file may be written, that is written in place: the
// new content waits in a nameless file in the temporary folder, the old one is copied to a file "tmp_XXXXXX" there, and
// a failure restores it. Only a program that is killed while the file is being written leaves it half written, and that
// copy. A target that is no regular file (a device, a pipe) is written to as it is.
//
// Errors: statuses of files, logged. Messages name the path as the caller gave it, nothing else.
#pragma once

#include <optional>

#include "kit/streams/AKFile.h"

class AKFileTarget;

class AKFileReplacer {
 public:
  /// A replacer of the file at `path`; touches nothing yet.
  explicit AKFileReplacer(const AKFilePath& path);
  AKFileReplacer(const AKFileReplacer&) = delete;
  AKFileReplacer& operator=(const AKFileReplacer&) = delete;
  /// Without a Commit that succeeded: deletes what was written.
  ~AKFileReplacer();

  /// The new file is to have the attributes of the file `model`, not of the old one; when there is no such file, only
  /// the user may read or write it. To be called before Open.
  void SetModel(const AKFilePath& model) { model_ = model; }
  /// Creates the temporary file and opens it for reading and writing.
  int Open();
  /// The file to write to, between Open and Commit: it has the target's path, but the new content. It is the
  /// replacer's to close.
  AKFile& File() { return *file_; }
  /// Closes the new file and puts it in the target's place. Nothing is replaced unless everything was written.
  int Commit();

 private:
  AKFilePath path_;
  std::optional<AKFilePath> model_;
  std::unique_ptr<AKFileTarget> target_;
  std::optional<AKFile> file_;
};
