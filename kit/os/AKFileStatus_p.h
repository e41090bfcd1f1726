// What the system knows of a file.
#pragma once

/// Bytes, and seconds since 1970. Where a file system keeps no time of creation, it is that of the last change.
struct AKFileStatus {
  bool isRegular = false;
  unsigned long long size = 0;
  unsigned long long created = 0;
  unsigned long long modified = 0;
};

/// Links are followed. False with errno when there is no such file.
bool AKGetFileStatus(const char* path, AKFileStatus* status);
bool AKGetFileStatus(int descriptor, AKFileStatus* status);

/// The flags that open a folder to reach what is in it; they ask for no right to list it.
extern const int kAKOpenFolder;
