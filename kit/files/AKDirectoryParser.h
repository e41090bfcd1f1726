// AKDirectoryParser: lists what is in a folder.
//
// Every name of the system has an AKFilePath (AKFilePath.h), so that what is listed can be opened. "." and ".." are
// left out. Links are listed by what they lead to, and not followed into folders below. One folder is open at a time.
#pragma once

#include "kit/files/AKFilePathArray.h"

class AKDirectoryParser {
 public:
  /// Replaces the lists by the entries of `folder`, with `recursive` also by those of all folders below. The lists are
  /// sorted; each path begins with `folder`. False, with errno, when the folder, or one below it, could not be read to
  /// its end; what was found is kept.
  bool Parse(const AKFilePath& folder, bool recursive);

  ///@{
  /// What the last Parse found: regular files, and folders.
  const AKFilePathArray& Files() const { return files_; }
  const AKFilePathArray& Folders() const { return folders_; }
  ///@}
  /// Devices, pipes, sockets and links that lead nowhere.
  const AKFilePathArray& Others() const { return others_; }

 private:
  bool ParseFolder(const AKFilePath& folder);
  void AddEntry(const AKFilePath& folder, const char* name);

  AKFilePathArray files_;
  AKFilePathArray folders_;
  AKFilePathArray others_;
  AKFilePathArray pending_;  // folders whose entries are yet to be listed
};
