// What the fuzz targets of the records share: bytes in, a record read, written and read again. Reading, of sound bytes
// and of others, stays within the memory that the input's size allows.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "fuzz/AllocationCounter.h"
#include "kit/containers/AKMemoryBlock.h"
#include "kit/streams/AKFile.h"

namespace record_fuzz {

/// A stream over the input, open for reading.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : file_(data, static_cast<unsigned int>(size)) {
    file_.OpenForRead();
  }
  const AKFile& File() const { return file_; }

 private:
  AKFile file_;
};

/// Reads a record with `read(file, &record)`. One that is read is written with `write(file, record)`, and what is
/// written has to be readable, to the same record by `same`.
template <typename Record, typename Read, typename Write, typename Same>
int RoundTrip(const std::uint8_t* data, std::size_t size, Read read, Write write, Same same) {
  const Input input(data, size);
  Record first{};
  const allocation::Peak peak;
  const int status = read(input.File(), &first);
  if (peak.Size() > allocation::LimitFor(size)) std::abort();
  if (status != 0) return 0;
  AKFile file(AKFile::kModeMemory);
  file.CreateForReadWrite();
  if (write(file, first) != 0) std::abort();
  file.SetPos(0);
  Record second{};
  if (read(file, &second) != 0 || !same(first, second)) std::abort();
  if (!file.IsEndOfFile(0)) std::abort();
  return 0;
}

}  // namespace record_fuzz
