#include "kit/values/AKValueRecord.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include "kit/streams/AKFileChunk.h"
#include "kit/streams/AKFileErrors.h"
#include "kit/streams/AKFileNumbers.h"
#include "kit/values/AKDictionary.h"
#include "kit/values/AKValueArray.h"

namespace {

// The least that an item of an array and an entry of a dictionary take on file.
constexpr unsigned int kMinValueSize = kAKFileChunkHeaderSize;
constexpr unsigned int kMinEntrySize = 4 + kMinValueSize;

}  // namespace

int AKRecordReader::Read(AKValue* value) {
  value->Clear();
  const int status = ReadContent(value);
  if (status != 0) value->Clear();
  return status;
}

int AKRecordReader::ReadContent(AKValue* value) {
  AKFileChunk chunk;
  if (int status = AKFileReadChunkHeader(file_, &chunk); status != 0) return status;
  switch (chunk.signature) {
    case kAKValueTypeBool: {
      std::uint32_t number = 0;
      const int status = AKFileReadUInt32(file_, &number);
      value->SetasBool(number != 0);
      return status;
    }
    case kAKValueTypeInteger: {
      long long number = 0;
      const int status = AKFileReadSInt64(file_, &number);
      value->SetasInteger(number);
      return status;
    }
    case kAKValueTypeFloat: {
      double number = 0;
      const int status = AKFileReadFloat64(file_, &number);
      value->SetasFloat(number);
      return status;
    }
    case kAKValueTypeString: {
      if (const int status = file_.SetPos(chunk.pos + 4); status != 0) return status;
      value->SetasAKString(kAKNullString);
      return value->GetasAKString()->ReadFromFile(file_);
    }
    case kAKValueTypeBinary: {
      if (const int status = AKFileGotoChunkBegin(file_, chunk); status != 0) return status;
      value->SetasBinary(AKMemoryBlock());
      return value->GetasBinary()->ReadFromFile(file_);
    }
    case kAKValueTypeArray: {
      if (const int status = AKFileGotoChunkBegin(file_, chunk); status != 0) return status;
      value->SetasAKValueArray(AKValueArray());
      return Read(value->GetasAKValueArray());
    }
    case kAKValueTypeDictionary: {
      if (const int status = AKFileGotoChunkBegin(file_, chunk); status != 0) return status;
      value->SetasAKDictionary(AKDictionary());
      return Read(value->GetasAKDictionary());
    }
    default:
      return AKFileGotoChunkEnd(file_, chunk);
  }
}

int AKRecordReader::Read(AKValueArray* array) {
  array->Clear();
  const int status = ReadItems(array);
  if (status != 0) array->Free();
  return status;
}

int AKRecordReader::Read(AKDictionary* dictionary) {
  dictionary->Clear();
  const int status = ReadEntries(dictionary);
  if (status != 0) dictionary->Free();
  return status;
}

// Reads what precedes the items of an array or dictionary. `end` receives the end of the chunk, not beyond that of the
// chunk around it.
int AKRecordReader::BeginItems(unsigned int signature, unsigned int itemSize, unsigned int* count,
                               unsigned long long* end) {
  errno = 0;
  if (nesting_ == kAKRecordMaxNesting) return AKFileLogFailure(file_, kAKFileStatusTooBig);
  AKFileChunk chunk{.signature = signature};
  if (const int status = AKFileCheckChunkHeader(file_, &chunk); status != 0) return status;
  if (const int status = AKFileReadUInt32(file_, count); status != 0) return status;
  const unsigned long long begin = chunk.pos + kAKFileChunkHeaderSize + sizeof(*count);
  const std::uint64_t size = std::uint64_t{*count} * itemSize;
  *end = std::min<unsigned long long>(end_, chunk.pos + kAKFileChunkHeaderSize + chunk.size);
  if (size == 0 || (begin <= *end && size <= *end - begin && file_.HasBytes(size))) return 0;
  return AKFileLogMissingBytes(file_);
}

template <typename ReadOne>
int AKRecordReader::ReadChunk(unsigned int signature, unsigned int itemSize, ReadOne readOne) {
  std::uint32_t count = 0;
  unsigned long long end = 0;
  if (const int status = BeginItems(signature, itemSize, &count, &end); status != 0) return status;
  const unsigned long long outerEnd = std::exchange(end_, end);
  ++nesting_;
  int status = 0;
  for (std::uint32_t i = 0; i < count && status == 0; ++i) status = readOne();
  --nesting_;
  end_ = outerEnd;
  return status;
}

int AKRecordReader::ReadItems(AKValueArray* array) {
  return ReadChunk(kAKValueTypeArray, kMinValueSize, [&] {
    array->Append(AKValue());
    return Read(&(*array)[array->Count() - 1]);
  });
}

int AKRecordReader::ReadEntries(AKDictionary* dictionary) {
  return ReadChunk(kAKValueTypeDictionary, kMinEntrySize, [&] {
    AKString key;
    AKValue value;
    int status = key.ReadFromFile(file_);
    if (status == 0) status = Read(&value);
    if (status == 0) dictionary->PutEntry(key, std::move(value));
    return status;
  });
}

// The header of a value whose size is known beforehand.
int AKRecordWriter::WriteHeader(unsigned int signature, unsigned int size) {
  if (const int status = AKFileWriteSignat32(file_, signature); status != 0) return status;
  return AKFileWriteUInt32(file_, size);
}

int AKRecordWriter::Write(const AKValue& value) {
  switch (value.Type()) {
    case kAKValueTypeBool: {
      bool content = false;
      value.GetasBool(&content, false);
      if (const int status = WriteHeader(value.Type(), 4); status != 0) return status;
      return AKFileWriteUInt32(file_, content ? 1 : 0);
    }
    case kAKValueTypeInteger: {
      long long content = 0;
      value.GetasInteger(&content, false);
      if (const int status = WriteHeader(value.Type(), 8); status != 0) return status;
      return AKFileWriteSInt64(file_, content);
    }
    case kAKValueTypeFloat: {
      double content = 0;
      value.GetasFloat(&content, false);
      if (const int status = WriteHeader(value.Type(), 8); status != 0) return status;
      return AKFileWriteFloat64(file_, content);
    }
    case kAKValueTypeString:
      if (const int status = AKFileWriteSignat32(file_, value.Type()); status != 0) return status;
      return value.GetasAKString()->WriteToFile(file_);
    case kAKValueTypeBinary:
      return value.GetasBinary()->WriteToFile(file_);
    case kAKValueTypeArray:
      return Write(*value.GetasAKValueArray());
    case kAKValueTypeDictionary:
      return Write(*value.GetasAKDictionary());
    default:
      return WriteHeader(kAKValueTypeEmpty, 0);
  }
}

int AKRecordWriter::Write(const AKValueArray& array) {
  return WriteChunk(kAKValueTypeArray, [&] { return WriteItems(array); });
}

int AKRecordWriter::Write(const AKDictionary& dictionary) {
  return WriteChunk(kAKValueTypeDictionary, [&] { return WriteEntries(dictionary); });
}

template <typename WriteBody>
int AKRecordWriter::WriteChunk(unsigned int signature, WriteBody writeBody) {
  AKFileChunk chunk{.signature = signature};
  if (const int status = AKFileWriteChunkHeader(file_, chunk); status != 0) return status;
  if (const int status = writeBody(); status != 0) return status;
  return AKFileWriteChunkComplete(file_, chunk);
}

int AKRecordWriter::WriteItems(const AKValueArray& array) {
  // What is written has to be readable.
  errno = 0;
  if (nesting_ == kAKRecordMaxNesting) return AKFileLogFailure(file_, kAKFileStatusTooBig);
  int status = AKFileWriteUInt32(file_, array.Count());
  ++nesting_;
  for (unsigned int i = 0; i < array.Count() && status == 0; ++i) status = Write(array[i]);
  --nesting_;
  return status;
}

int AKRecordWriter::WriteEntries(const AKDictionary& dictionary) {
  errno = 0;
  if (nesting_ == kAKRecordMaxNesting) return AKFileLogFailure(file_, kAKFileStatusTooBig);
  int status = AKFileWriteUInt32(file_, dictionary.Count());
  ++nesting_;
  for (AKDictionary::Cursor cursor(dictionary); cursor.IsValid() && status == 0; cursor.Next()) {
    status = cursor.Key().WriteToFile(file_);
    if (status == 0) status = Write(cursor.Value());
  }
  --nesting_;
  return status;
}

int AKValue::ReadFromFile(const AKFile& file) { return AKRecordReader(file).Read(this); }
int AKValue::WriteToFile(AKFile& file) const { return AKRecordWriter(file).Write(*this); }
int AKValueArray::ReadFromFile(const AKFile& file) { return AKRecordReader(file).Read(this); }
int AKValueArray::WriteToFile(AKFile& file) const { return AKRecordWriter(file).Write(*this); }
int AKDictionary::ReadFromFile(const AKFile& file) { return AKRecordReader(file).Read(this); }
int AKDictionary::WriteToFile(AKFile& file) const { return AKRecordWriter(file).Write(*this); }

int AKDictionary::SkipFromFile(const AKFile& file) {
  AKFileChunk chunk{.signature = kAKValueTypeDictionary};
  if (const int status = AKFileCheckChunkHeader(file, &chunk); status != 0) return status;
  return AKFileGotoChunkEnd(file, chunk);
}
