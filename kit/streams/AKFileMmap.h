// AKFileMmap: read-only memory mappings of one file.
//
// The file owns its map and outlives it. Addresses stay valid until they are unmapped or the map dies, which unmaps
// all. A memory stream is not mapped by the system: its own bytes are handed out, which the next write or change of
// size may move. While a disk file is mapped its writes are not buffered, so that the map shows them at once. One
// thread at a time.
#pragma once

#include <unordered_map>

#include "kit/containers/ATArray.h"

class AKFile;

class AKFileMmap {
 public:
  /// One mapping.
  struct AKMmapItem {
    const void* address = nullptr;  ///< of the first byte
    unsigned long long size = 0;    ///< in bytes
  };

  /// A map of no mappings yet; the file is borrowed.
  explicit AKFileMmap(const AKFile* file) : file_(file) {}
  AKFileMmap(const AKFileMmap&) = delete;
  AKFileMmap& operator=(const AKFileMmap&) = delete;
  /// Unmaps everything.
  ~AKFileMmap() { UnmapAll(); }

  /// `size` bytes from `offset`, a multiple of the page size on a disk file; null on failure (LastError).
  const void* Map(unsigned long long offset, unsigned long long size);
  /// The whole file; `size`, which may be null, receives its size, 0 on failure.
  const void* MapAll(unsigned long long* size);
  /// Releases the mapping that begins at `address`; an unknown address does nothing.
  void Unmap(const void* address);
  /// Releases all mappings.
  void UnmapAll();

  /// The index, in order of creation, of the mapping that begins at `address`; kAKNotFound and false when there is
  /// none.
  bool FindItemByAddress(const void* address, unsigned int* index) const;
  /// The status of the last Map or MapAll.
  int LastError() const { return lastError_; }

  /// Bytes of a page of the system's memory.
  static unsigned int GetSysPageSize();

 private:
  int GetFileSize(unsigned long long* size) const;
  int FindInMemory(unsigned long long offset, unsigned long long size, const void** address) const;
  int MapDisk(unsigned long long offset, unsigned long long size, const void** address) const;
  void Release(const AKMmapItem& item) const;

  const AKFile* file_;
  ATArray<AKMmapItem> items_;
  std::unordered_map<const void*, unsigned int> indexes_;  // of the items, by their addresses
  int lastError_ = 0;
};
