// AKDirectoryParser: lists what is in a folder.
//
// Names come from the system as UTF-8. A name that the in-memory character set cannot hold, or that is no UTF-8 at all,
// could not be opened through an AKFilePath: it is listed apart, as the system spells it. "." and ".." are left out.
// Links are listed by what they lead to, and not followed into folders below.
#pragma once

#include "kit/files/AKFilePathArray.h"
#include "kit/text/AKStringArray.h"

class AKDirectoryParser {
 public:
  /// Replaces the lists by the entries of `folder`, with `recursive` also by those of all folders below. The lists are
  /// sorted; each path begins with `folder`. False, with errno, when the folder, or one below it, could not be read to
  /// its end; what was found is kept.
  bool Parse(const AKFilePath& folder, bool recursive);

  const AKFilePathArray& Files() const { return files_; }
  const AKFilePathArray& Folders() const { return folders_; }
  /// Devices, pipes, sockets and links that lead nowhere.
  const AKFilePathArray& Others() const { return others_; }
  /// UTF-8 paths, or what else the system has, of entries that no AKFilePath can stand for.
  const AKStringArray& Unrepresentable() const { return unrepresentable_; }

 private:
  bool ParseFolder(const AKFilePath& folder, bool recursive);
  bool AddEntry(const AKFilePath& folder, const char* name, bool recursive);

  AKFilePathArray files_;
  AKFilePathArray folders_;
  AKFilePathArray others_;
  AKStringArray unrepresentable_;
};
