// The records of values, arrays and dictionaries in files. AKValue, AKValueArray and AKDictionary use them; a caller
// uses those classes' members.
//
//   code    record
//   "bool"  chunk header with size 4, UInt32 0 or 1
//   "intg"  chunk header with size 8, SInt64
//   "real"  chunk header with size 8, Float64
//   "strg"  signature, then the string record, whose count serves as the chunk's size
//   "bina"  the memory block's chunk
//   "arry"  chunk: UInt32 count, then as many value records
//   "dict"  chunk: UInt32 count, then as many pairs of a string record (the key) and a value record, by ascending key
//   others  chunk header with signature 0 and size 0
//
// Arrays and dictionaries nest at most kAKRecordMaxNesting deep: one level more fails with -881. A count that the
// chunk, those around it and the rest of the file cannot hold fails with -890 before anything is allocated. Items are
// added as they are read, so that what a record takes in memory stays within 16 times what was read of it.
#pragma once

class AKDictionary;
class AKFile;
class AKValue;
class AKValueArray;

/// How deep arrays and dictionaries nest.
inline constexpr unsigned int kAKRecordMaxNesting = 512;

/// Reads records. Each Read returns the status of the first file operation that failed, and leaves the output empty
/// then.
class AKRecordReader {
 public:
  /// The file, which is borrowed, is read from where it stands.
  explicit AKRecordReader(const AKFile& file) : file_(file) {}

  ///@{
  /// The record of a value of any kind, of an array, of a dictionary.
  int Read(AKValue* value);
  int Read(AKValueArray* array);
  int Read(AKDictionary* dictionary);
  ///@}

 private:
  int ReadContent(AKValue* value);
  int ReadItems(AKValueArray* array);
  int ReadEntries(AKDictionary* dictionary);
  template <typename ReadOne>
  int ReadChunk(unsigned int signature, unsigned int itemSize, ReadOne readOne);
  int BeginItems(unsigned int signature, unsigned int itemSize, unsigned int* count, unsigned long long* end);

  const AKFile& file_;
  unsigned int nesting_ = 0;
  unsigned long long end_ = ~0ULL;  // of the chunk that is being read
};

/// Writes records. Each Write returns the status of the first file operation that failed.
class AKRecordWriter {
 public:
  /// The file is borrowed.
  explicit AKRecordWriter(AKFile& file) : file_(file) {}

  ///@{
  /// The record of a value, an array or a dictionary.
  int Write(const AKValue& value);
  int Write(const AKValueArray& array);
  int Write(const AKDictionary& dictionary);
  ///@}

 private:
  int WriteHeader(unsigned int signature, unsigned int size);
  int WriteItems(const AKValueArray& array);
  int WriteEntries(const AKDictionary& dictionary);
  template <typename WriteBody>
  int WriteChunk(unsigned int signature, WriteBody writeBody);

  AKFile& file_;
  unsigned int nesting_ = 0;
};
