// AKFile: the kit's one stream type. A disk file, a temporary file, or a growable memory stream.
//
// Ownership: the file owns its descriptor, its buffer, a memory stream's data and its memory map. The destructor
// closes; a temporary file is deleted when it closes. An AKFile cannot be copied and is used by one thread at a time.
//
// Units: sizes and positions are bytes. A memory stream's are at most 0xFFFFFFFF.
//
// Errors: 0, or a negative status of kit/streams/AKFileErrors.h that has been logged. Disk files are buffered: a write
// that the system refuses is reported by the operation that meets the refusal, at the latest by Close, so a caller that
// wrote checks what Close returns. Seeking, sizes and memory maps see all that was written. What the system refused
// stays in the buffer and is tried again; until that succeeds everything can still be read, sizes can be asked and set,
// and SetFileSize drops what lies beyond the new end.
//
// A disk file is read through a window of up to 64 KiB: what it holds is served without asking the system, so that a
// change by another process or another AKFile, a cut among them, may not show. Flush forgets the window.
#pragma once

#include <cstdint>
#include <cstring>
#include <memory>

#include "kit/containers/AKMemoryBlock.h"
#include "kit/containers/AKStreamMemory.h"
#include "kit/files/AKFilePath.h"
#include "kit/streams/AKFileBuffer.h"
#include "kit/text/AKString.h"

class AKFileMmap;

/// Where a seek counts from. From the end of a memory stream the offset counts backwards.
enum AKFileWhence : int {
  kAKFileWhenceBegin = 0,    ///< the first byte
  kAKFileWhenceCurrent = 1,  ///< the position
  kAKFileWhenceEnd = 2,      ///< behind the last byte
};

class AKFile {
 public:
  // Byte orders

  /// The highest byte first. As the argument of a number function 0 means the file's own order.
  static constexpr unsigned int kEndianBig = 1;
  /// The lowest byte first.
  static constexpr unsigned int kEndianLittle = 2;
  /// The order of this machine's memory.
  static constexpr unsigned int kEndianHost = kEndianLittle;

  // Modes of the constructors, and bits of Flags()

  /// A file in the temporary folder, deleted when it closes.
  static constexpr unsigned int kModeTemporary = 16;
  /// A stream in memory.
  static constexpr unsigned int kModeMemory = 32;
  /// The one of the two that SetPreferedModeCache chose.
  static constexpr unsigned int kModePreferredCache = 64;
  ///@{
  /// What an open file allows.
  static constexpr unsigned int kFlagRead = 0x100;
  static constexpr unsigned int kFlagWrite = 0x200;
  ///@}

  // Creating

  /// Without a path: temporary (16), memory stream (32) or the preferred of the two (64).
  explicit AKFile(unsigned int mode);
  /// A disk file; with mode bit 16 the path is ignored and the file is temporary.
  explicit AKFile(const AKFilePath& path, unsigned int mode = 0);
  /// A memory stream with a copy of the data; null or 0 gives an empty one.
  AKFile(const void* data, unsigned int size);
  /// A memory stream with a copy of the block's bytes.
  explicit AKFile(const AKMemoryBlock& data);
  AKFile(const AKFile&) = delete;
  AKFile& operator=(const AKFile&) = delete;
  /// Closes. Nobody learns what fails then: who wrote calls Close.
  ~AKFile();

  /// Temporary file (16) or memory stream (32) for files constructed with mode 64; other modes are ignored. To be set
  /// once at start-up; it is the temporary file before.
  static void SetPreferedModeCache(unsigned int mode);

  // What it is

  /// The order of numbers unless a call says otherwise: 1 or 2, others are ignored.
  void SetEndianness(unsigned int endian);
  /// 1 or 2.
  unsigned int Endianness() const { return flags_ & 3; }
  /// The byte order, the mode, and while it is open what may be done.
  unsigned int Flags() const { return flags_; }
  ///@{
  /// Which of the kinds it is; a disk file is neither.
  bool IsMemoryStream() const { return (flags_ & kModeMemory) != 0; }
  bool IsTemporary() const { return (flags_ & kModeTemporary) != 0; }
  ///@}
  ///@{
  /// Both are empty for a memory stream, and for a temporary file that is not open.
  const AKFilePath& Path() const { return path_; }
  const AKString& Name() const { return name_; }
  ///@}

  // Opening and closing

  /// Opens what exists for reading. A memory stream's data survive opening and creating; they do not survive Close.
  int OpenForRead();
  /// Opens what exists for both.
  int OpenForReadWrite();
  /// Makes the file, empty, or empties the one that is there, and opens it for both.
  int CreateForReadWrite();
  /// Flushes, closes and returns the first failure of the two; the file is closed in any case.
  int Close();
  /// Closes and deletes. What was not yet written is dropped.
  int Remove();
  ///@{
  /// 0 when the file is open (for what the name says), else -893, logged.
  int CheckIsOpened() const;
  int CheckIsOpenedForRead() const;
  int CheckIsOpenedForWrite() const;
  ///@}

  // Reading and writing (AKFileBuffer.cpp; memory streams: AKFileMemory.cpp)

  /// All `count` bytes or an error. A memory stream that holds fewer moves nothing; a disk file stands behind what it
  /// could read.
  int Read(void* buffer, unsigned long long count) const {
    // The buffer of a closed file and of a memory stream holds nothing; a disk file has no memory.
    if (count == 0 || buffer_.TryRead(buffer, count)) return 0;
    if (count > memorySize_ - memoryPosition_ || (flags_ & kFlagRead) == 0) return ReadUnbuffered(buffer, count);
    std::memcpy(buffer, memory_.data() + memoryPosition_, count);
    memoryPosition_ += static_cast<unsigned int>(count);
    return 0;
  }
  /// The data may be the stream's own.
  int Write(const void* data, unsigned long long count) {
    if (count == 0 || buffer_.TryWrite(data, count)) return 0;
    if (count > memory_.size() - memoryPosition_ || !memoryOpened_ || (flags_ & kFlagWrite) == 0) {
      return WriteUnbuffered(data, count);
    }
    std::memmove(memory_.data() + memoryPosition_, data, count);  // the data may be the stream's own
    memoryPosition_ += static_cast<unsigned int>(count);
    if (memoryPosition_ > memorySize_) memorySize_ = memoryPosition_;
    return 0;
  }
  /// Up to `count` bytes, fewer only at the end: `got` receives how many.
  int ReadUpTo(void* buffer, unsigned long long count, unsigned long long* got) const;
  /// Hands buffered bytes to the system and forgets what was read ahead: the next read sees the file as it then is.
  int Flush() const;
  /// Flushes and waits until the disk has everything. Nothing to do for a memory stream.
  int Sync();

  // Position

  /// 0 on failure.
  int GetPos(unsigned long long* pos) const;
  ///@{
  /// Moves the position, in bytes. A failed seek leaves it. A disk file's position may lie beyond its end.
  int SetPos(unsigned long long pos) const;
  int Seek(long long offset, AKFileWhence whence) const;
  ///@}
  ///@{
  /// Moves the position by `count` bytes. Beyond the ends of a memory stream it fails and moves nothing.
  int Skip(unsigned long long count) const;
  int SkipBack(unsigned long long count) const;
  ///@}
  /// True when position + count >= size, so also when exactly `count` bytes remain; and when the file is not open or
  /// cannot tell.
  bool IsEndOfFile(unsigned long long count) const;
  /// True when `count` bytes follow the position. Readers ask before they allocate.
  bool HasBytes(unsigned long long count) const;

  // Size, times, content

  /// New bytes are zero. A memory stream's position is pulled back to the new size, a disk file's stays.
  int SetFileSize(unsigned long long size);
  /// Size in bytes, times in seconds since 1970 (0 for memory streams). Any output may be null.
  int GetFileInfo(unsigned long long* size, unsigned long long* created, unsigned long long* modified) const;
  /// The content of a memory stream, without copying: valid until the stream is written or closed.
  int GetMemoryStreamDataPtr(const void** data, unsigned long long* size) const;
  /// A copy of the content of a memory stream.
  int GetMemoryStreamDataBlock(AKMemoryBlock* block) const;

  // Memory map (AKFileMmap.cpp)

  /// The file's map, made on the first call and gone with Close.
  AKFileMmap* MemMap() const;
  /// The whole file in the map, null on failure; `size`, which may be null, receives its size.
  const void* MemMapAll(unsigned long long* size) const;
  /// Releases all mappings.
  void MemUnmapAll() const;
  /// The status of the last mapping that was asked for.
  int MemMapLastError() const;

 private:
  friend class AKFileMmap;
  friend class AKFileReplacer;
  friend struct AKLayout;

  bool IsDiskOpen() const { return descriptor_ >= 0; }
  int OpenDisk(int systemFlags, unsigned int openBits);
  int OpenMemory(unsigned int openBits);
  int CreateTemporary();
  void AttachDescriptor(int descriptor, unsigned int openBits);
  int DeleteFile();
  int CloseDisk(bool flush);
  void CloseMemory();
  int ReadUnbuffered(void* buffer, unsigned long long count) const;
  int WriteUnbuffered(const void* data, unsigned long long count);
  AKFileBuffer::Result ReadBuffered(void* buffer, unsigned long long count) const;
  int RefuseMemoryRead(unsigned long long count) const;
  int WriteMemory(const void* data, unsigned long long count);
  bool SeekMemory(long long offset, AKFileWhence whence) const;
  bool SeekDisk(long long offset, AKFileWhence whence) const;
  void ReserveMemory(unsigned long long capacity);
  int SetMemorySize(unsigned long long size);
  bool GetSizeSilently(unsigned long long* size) const;

  int descriptor_ = -1;
  AKFilePath path_;
  AKString name_;
  unsigned int flags_ = kEndianLittle;
  bool memoryOpened_ = false;
  mutable unsigned int memoryPosition_ = 0;
  unsigned int memorySize_ = 0;
  AKStreamMemory memory_;  // with the room beyond the stream, which ends at memorySize_
  mutable std::unique_ptr<AKFileMmap> map_;
  mutable AKFileBuffer buffer_;
};
