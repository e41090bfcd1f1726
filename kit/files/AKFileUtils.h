// AKFileUtils: what the kit asks of the file system about files and folders.
//
// Names that the in-memory character set holds reach the system as UTF-8, all others byte for byte (AKFilePath.h). The
// functions return false, -1 or an empty path on failure, with the reason in errno, and log nothing: the caller knows
// what the failure means.
#pragma once

#include "kit/files/AKFilePath.h"

class AKFileUtils {
 public:
  /// The path as the system's bytes; empty, which no system call accepts, when the path holds a NUL.
  static AKString GetAsSystemPath(const AKFilePath& path);
  /// The path of any name that the system has: GetAsSystemPath gives the same bytes again. False for null, with an
  /// empty path.
  static bool GetFromSystemPath(const char* systemPath, AKFilePath* path);

  ///@{
  /// What is there: any kind of entry, a regular file, a folder; and what the user may do with it. Links are followed;
  /// false also when it cannot be told.
  static bool Exists(const AKFilePath& path);
  static bool IsFile(const AKFilePath& path);
  static bool IsFolder(const AKFilePath& path);
  static bool IsReadable(const AKFilePath& path);
  static bool IsWritable(const AKFilePath& path);
  static bool IsExecutable(const AKFilePath& path);
  ///@}

  /// Size in bytes and times in seconds since 1970, of a regular file only. Where the file system keeps no creation
  /// time the modification time stands in. Any output may be null.
  static bool GetFileInfo(const AKFilePath& path, unsigned long long* size, unsigned long long* created,
                          unsigned long long* modified);

  /// The same of an open file.
  static bool GetFileInfo(int descriptor, unsigned long long* size, unsigned long long* created,
                          unsigned long long* modified);

  /// Creates the folder and those above it that are missing; a folder that exists is a success. A failure removes
  /// what was created on the way. Takes a time that grows with the length of the path alone.
  static bool CreateFolder(const AKFilePath& path);
  /// Deletes a file or a link.
  static bool RemoveFile(const AKFilePath& path);
  /// Deletes an empty folder.
  static bool RemoveFolder(const AKFilePath& path);
  /// Renames within one file system; an existing file at `to` is replaced in one step.
  static bool Rename(const AKFilePath& from, const AKFilePath& to);

  /// TMPDIR when it names a folder, else /tmp.
  static AKFilePath GetTemporaryDir();
  /// A path "tmp_XXXXXX" in the temporary directory at which nothing exists. Another process may take the name before
  /// the caller does; the two functions below leave no such gap.
  static AKFilePath GetUnusedFileNameInTemporaryDir();
  /// Creates a file "tmp_XXXXXX", readable and writable by the user alone, and returns its descriptor, which is the
  /// caller's to close; -1 on failure.
  static int CreateUnusedFileInTemporaryDir(AKFilePath* path);
  /// Creates a folder "tmp_XXXXXX" that the user alone may enter; false on failure.
  static bool CreateUnusedFolderInTemporaryDir(AKFilePath* path);
};
