// AKFileReplacer: replaces a file whole or not at all.
//
// The new content is written to a temporary file beside the target, forced to the disk and renamed over it. Until
// Commit succeeds the old file stays as it is, byte for byte; a replacer that dies without that deletes what it wrote.
// A program that is killed leaves the temporary file, ".tmp_" and 16 hexadecimal digits; the next replacement in that
// folder removes those that nobody has written to for an hour.
// The new file has the old one's permissions, or those of a new file. A link is followed: the file it leads to is
// replaced. A target that is no regular file (a device, a pipe) cannot be renamed over and is written in place.
//
// Errors: statuses of files, logged.
#pragma once

#include <optional>

#include "kit/streams/AKFile.h"

class AKFileReplacer {
 public:
  explicit AKFileReplacer(const AKFilePath& path) : target_(path) {}
  AKFileReplacer(const AKFileReplacer&) = delete;
  AKFileReplacer& operator=(const AKFileReplacer&) = delete;
  ~AKFileReplacer();

  /// Creates the temporary file and opens it for reading and writing.
  int Open();
  /// The file to write to, between Open and Commit.
  AKFile& File() { return *file_; }
  /// Closes the new file and puts it in the target's place. Nothing is replaced unless everything was written.
  int Commit();

 private:
  bool CreateBesideTarget(unsigned int permissions);

  AKFilePath target_;
  AKFilePath temporary_;  // empty when the target is written in place
  std::optional<AKFile> file_;
};
