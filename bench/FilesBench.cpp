// Files, number arrays and dictionaries against the C library's streams, std::map, MessagePack and Qt.
#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "bench/Ratio.h"
#include "kit/files/AKFileUtils.h"
#include "kit/streams/AKFileNumbers.h"
#include "kit/values/AKValueHelpers.h"

#if AK_HAS_MESSAGE_PACK
#include <fstream>
#include <nlohmann/json.hpp>
#endif
#if AK_HAS_QT
#include <QDataStream>
#include <QFile>
#include <QVariantMap>
#endif

namespace {

constexpr unsigned int kNumbers = 1000000;
constexpr unsigned int kEntries = 100000;
constexpr unsigned int kBlockBytes = 64U << 20;

// A file in the temporary directory that goes with the object.
class Scratch {
 public:
  Scratch() : path_(AKFileUtils::GetUnusedFileNameInTemporaryDir()) {}
  ~Scratch() { AKFileUtils::RemoveFile(path_); }
  const AKFilePath& Path() const { return path_; }
  const char* CPath() const { return path_.Text().CStr(); }

 private:
  AKFilePath path_;
};

void Check(benchmark::State& state, bool good) {
  if (!good) state.SkipWithError("an operation failed");
}

void WriteNumbers(benchmark::State& state, AKFile& file) {
  int status = 0;
  for (unsigned int i = 0; i < kNumbers; ++i) status |= AKFileWriteUInt32(file, i);
  Check(state, status == 0);
}

void ReadNumbers(benchmark::State& state, const AKFile& file) {
  unsigned int sum = 0;
  unsigned int number = 0;
  int status = 0;
  for (unsigned int i = 0; i < kNumbers; ++i) {
    status |= AKFileReadUInt32(file, &number);
    sum += number;
  }
  benchmark::DoNotOptimize(sum);
  Check(state, status == 0);
}

void StdioWrite(benchmark::State& state) {
  const Scratch scratch;
  for (auto _ : state) {
    std::FILE* const file = std::fopen(scratch.CPath(), "wb");
    for (unsigned int i = 0; i < kNumbers; ++i) std::fwrite(&i, sizeof(i), 1, file);
    Check(state, std::fclose(file) == 0);
  }
}

void StdioRead(benchmark::State& state) {
  const Scratch scratch;
  std::FILE* file = std::fopen(scratch.CPath(), "wb");
  for (unsigned int i = 0; i < kNumbers; ++i) std::fwrite(&i, sizeof(i), 1, file);
  std::fclose(file);
  for (auto _ : state) {
    file = std::fopen(scratch.CPath(), "rb");
    unsigned int sum = 0;
    unsigned int number = 0;
    for (unsigned int i = 0; i < kNumbers; ++i) {
      if (std::fread(&number, sizeof(number), 1, file) != 1) break;
      sum += number;
    }
    benchmark::DoNotOptimize(sum);
    std::fclose(file);
  }
}

void DiskWrite(benchmark::State& state) {
  const Scratch scratch;
  for (auto _ : state) {
    AKFile file(scratch.Path());
    Check(state, file.CreateForReadWrite() == 0);
    WriteNumbers(state, file);
    Check(state, file.Close() == 0);
  }
}

void DiskRead(benchmark::State& state) {
  const Scratch scratch;
  AKFile file(scratch.Path());
  file.CreateForReadWrite();
  WriteNumbers(state, file);
  file.Close();
  for (auto _ : state) {
    Check(state, file.OpenForRead() == 0);
    ReadNumbers(state, file);
    file.Close();
  }
}

void MemoryWrite(benchmark::State& state) {
  for (auto _ : state) {
    AKFile file(AKFile::kModeMemory);
    file.CreateForReadWrite();
    WriteNumbers(state, file);
  }
}

void MemoryRead(benchmark::State& state) {
  AKFile file(AKFile::kModeMemory);
  file.CreateForReadWrite();
  WriteNumbers(state, file);
  for (auto _ : state) {
    file.SetPos(0);
    ReadNumbers(state, file);
  }
}

const bool kDiskWrite = ratio::Pair("write 1,000,000 UInt32 to disk / fwrite", 1.0, DiskWrite, StdioWrite);
const bool kDiskRead = ratio::Pair("read 1,000,000 UInt32 from disk / fread", 1.0, DiskRead, StdioRead);
const bool kMemoryWrite = ratio::Pair("write 1,000,000 UInt32 to memory / fwrite", 0.5, MemoryWrite, StdioWrite);
const bool kMemoryRead = ratio::Pair("read 1,000,000 UInt32 from memory / fread", 0.5, MemoryRead, StdioRead);

// Swapped arrays through a memory stream that has its size already, against one copy of the same block.
template <typename T>
void SwappedWrite(benchmark::State& state) {
  const std::vector<T> numbers(kBlockBytes / sizeof(T), T(7));
  AKFile file(AKFile::kModeMemory);
  file.CreateForReadWrite();
  file.SetFileSize(kBlockBytes);
  for (auto _ : state) {
    file.SetPos(0);
    Check(state, ATNumbersLow<T, 0>::WriteToFile(file, numbers.data(), kBlockBytes / sizeof(T), 0, 1) == 0);
  }
}

template <typename T>
void SwappedRead(benchmark::State& state) {
  std::vector<T> numbers(kBlockBytes / sizeof(T));
  AKFile file(AKFile::kModeMemory);
  file.CreateForReadWrite();
  file.SetFileSize(kBlockBytes);
  for (auto _ : state) {
    file.SetPos(0);
    Check(state, ATNumbersLow<T, 0>::ReadFromFile(file, numbers.data(), kBlockBytes / sizeof(T), 0, 1) == 0);
  }
}

void CopyBlock(benchmark::State& state) {
  const std::vector<char> source(kBlockBytes, 7);
  std::vector<char> target(kBlockBytes);
  for (auto _ : state) {
    std::memcpy(target.data(), source.data(), kBlockBytes);
    benchmark::ClobberMemory();
  }
}

const bool kSwap16 =
    ratio::Pair("write 64 MiB of swapped UInt16 / memcpy", 2.0, SwappedWrite<unsigned short>, CopyBlock);
const bool kSwap32 = ratio::Pair("write 64 MiB of swapped UInt32 / memcpy", 2.0, SwappedWrite<unsigned int>, CopyBlock);
const bool kSwap64 = ratio::Pair("write 64 MiB of swapped Float64 / memcpy", 2.0, SwappedWrite<double>, CopyBlock);
const bool kSwapRead32 =
    ratio::Pair("read 64 MiB of swapped UInt32 / memcpy", 2.0, SwappedRead<unsigned int>, CopyBlock);

// Calls integer(key, i), real(key, x) or text(key, t) for a third of the entries each, for every container in the same
// order, which is not that of the keys.
template <typename Integer, typename Real, typename Text>
void ForEachEntry(Integer integer, Real real, Text text) {
  for (unsigned int i = 0; i < kEntries; ++i) {
    const std::string key = "Key" + std::to_string(std::uint64_t{i} * 7919 % kEntries);
    if (i % 3 == 0) integer(key, static_cast<long long>(i));
    if (i % 3 == 1) real(key, i / 3.0);
    if (i % 3 == 2) text(key, "some text for entry " + key);
  }
}

AKDictionary Entries() {
  AKDictionary dictionary;
  ForEachEntry(
      [&](const std::string& key, long long number) { dictionary.SetValue(key, AKValueSetasSInt(number)); },
      [&](const std::string& key, double number) { dictionary.SetValue(key, AKValueSetasFloat64(number)); },
      [&](const std::string& key, const std::string& text) { dictionary.SetValue(key, AKValueSetasAKString(text)); });
  return dictionary;
}

void SaveDictionary(benchmark::State& state) {
  const Scratch scratch;
  const AKDictionary dictionary = Entries();
  for (auto _ : state) {
    AKFile file(scratch.Path());
    Check(state, file.CreateForReadWrite() == 0 && dictionary.WriteToFile(file) == 0 && file.Close() == 0);
  }
}

void LoadDictionary(benchmark::State& state) {
  const Scratch scratch;
  Entries().SaveToBinFile(scratch.Path());
  for (auto _ : state) {
    AKDictionary dictionary;
    Check(state, dictionary.LoadFromBinFile(scratch.Path()) == 0 && dictionary.Count() == kEntries);
  }
}

#if AK_HAS_MESSAGE_PACK
nlohmann::json MessagePackEntries() {
  nlohmann::json entries;
  const auto set = [&](const std::string& key, const auto& content) { entries[key] = content; };
  ForEachEntry(set, set, set);
  return entries;
}

void SaveMessagePack(benchmark::State& state) {
  const Scratch scratch;
  const nlohmann::json entries = MessagePackEntries();
  for (auto _ : state) {
    const std::vector<std::uint8_t> bytes = nlohmann::json::to_msgpack(entries);
    std::ofstream(scratch.CPath(), std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  }
}

void LoadMessagePack(benchmark::State& state) {
  const Scratch scratch;
  const std::vector<std::uint8_t> saved = nlohmann::json::to_msgpack(MessagePackEntries());
  std::ofstream(scratch.CPath(), std::ios::binary)
      .write(reinterpret_cast<const char*>(saved.data()), static_cast<std::streamsize>(saved.size()));
  for (auto _ : state) {
    std::vector<char> bytes(saved.size());
    std::ifstream(scratch.CPath(), std::ios::binary).read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    const nlohmann::json entries = nlohmann::json::from_msgpack(bytes);
    Check(state, entries.size() == kEntries);
  }
}

const bool kSavePack = ratio::Pair("save 100,000 entries / MessagePack", 1.0, SaveDictionary, SaveMessagePack);
const bool kLoadPack = ratio::Pair("load 100,000 entries / MessagePack", 1.0, LoadDictionary, LoadMessagePack);
#endif

#if AK_HAS_QT
QVariantMap QtEntries() {
  QVariantMap entries;
  const auto set = [&](const std::string& key, auto content) { entries[QString::fromStdString(key)] = content; };
  ForEachEntry(set, set, [&](const std::string& key, const std::string& text) {
    entries[QString::fromStdString(key)] = QString::fromStdString(text);
  });
  return entries;
}

void SaveQt(benchmark::State& state) {
  const Scratch scratch;
  const QVariantMap entries = QtEntries();
  for (auto _ : state) {
    QFile file(scratch.CPath());
    Check(state, file.open(QIODevice::WriteOnly));
    QDataStream stream(&file);
    stream << entries;
  }
}

void LoadQt(benchmark::State& state) {
  const Scratch scratch;
  {
    QFile file(scratch.CPath());
    Check(state, file.open(QIODevice::WriteOnly));
    QDataStream stream(&file);
    stream << QtEntries();
  }
  for (auto _ : state) {
    QFile file(scratch.CPath());
    Check(state, file.open(QIODevice::ReadOnly));
    QDataStream stream(&file);
    QVariantMap entries;
    stream >> entries;
    Check(state, entries.size() == static_cast<int>(kEntries));
  }
}

const bool kSaveQt = ratio::Pair("save 100,000 entries / QDataStream", 1.0, SaveDictionary, SaveQt);
const bool kLoadQt = ratio::Pair("load 100,000 entries / QDataStream", 1.0, LoadDictionary, LoadQt);
#endif

std::vector<std::string> ShuffledKeys(unsigned int count) {
  std::vector<std::string> keys;
  for (unsigned int i = 0; i < count; ++i) keys.push_back("Key" + std::to_string(i));
  std::shuffle(keys.begin(), keys.end(), std::mt19937(1));
  return keys;
}

void SetKeys(benchmark::State& state, unsigned int count) {
  const std::vector<std::string> keys = ShuffledKeys(count);
  const AKValue value = AKValueSetasSInt(5);
  for (auto _ : state) {
    AKDictionary dictionary;
    for (const std::string& key : keys) dictionary.SetValue(key, value);
    Check(state, dictionary.Count() == count);
    state.PauseTiming();  // what it takes to give the memory back is no part of it
    dictionary.Free();
    malloc_trim(0);  // or the next round's blocks would lie scattered over what the last one left
    state.ResumeTiming();
  }
}

const bool kManyKeys = ratio::Pair(
    "set 1,000,000 keys in random order / 100,000", 15.0, [](benchmark::State& state) { SetKeys(state, 1000000); },
    [](benchmark::State& state) { SetKeys(state, 100000); });

// Three levels of 1,000 entries each; a path leads to a random entry of the third.
constexpr unsigned int kLevel = 1000;

void LookUpPaths(benchmark::State& state) {
  AKDictionary dictionary;
  for (const char* prefix : {"Key500.Key500.", "Key500.", ""}) {
    for (unsigned int i = 0; i < kLevel; ++i) {
      AKString path;
      dictionary.AddValue(path.Assignf("%sKey%u", prefix, i), AKValueSetasSInt(i));  // the inner levels stay
    }
  }
  std::vector<AKString> paths;
  for (const std::string& key : ShuffledKeys(kLevel)) {
    if (key != "Key500") paths.push_back(AKString("Key500.Key500.") + AKString(key));
  }
  for (auto _ : state) {
    long long sum = 0;
    for (const AKString& path : paths) sum += AKValueGetasSInt(dictionary.GetValue(path), false);
    benchmark::DoNotOptimize(sum);
  }
}

struct Nest {
  std::map<std::string, Nest> entries;
  long long number = 0;
};

void LookUpMaps(benchmark::State& state) {
  Nest nest;
  for (Nest* level : {&nest, &nest.entries["Key500"], &nest.entries["Key500"].entries["Key500"]}) {
    for (unsigned int i = 0; i < kLevel; ++i) level->entries["Key" + std::to_string(i)].number = i;
  }
  std::vector<std::string> paths;
  for (const std::string& key : ShuffledKeys(kLevel)) {
    if (key != "Key500") paths.push_back("Key500.Key500." + key);
  }
  for (auto _ : state) {
    long long sum = 0;
    for (const std::string& path : paths) {
      const Nest* level = &nest;
      for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find('.', begin), path.size());
        level = &level->entries.find(path.substr(begin, end - begin))->second;
        begin = end + 1;
      }
      sum += level->number;
    }
    benchmark::DoNotOptimize(sum);
  }
}

const bool kPaths = ratio::Pair("look up key paths in a nest / std::map", 1.0, LookUpPaths, LookUpMaps);

// Mapping a sparse file of 1 GiB against mapping one of 1 MiB: nothing is read, so the size does not count.
void MapWhole(benchmark::State& state, unsigned long long size) {
  AKFile file(AKFile::kModeTemporary);
  Check(state, file.CreateForReadWrite() == 0 && file.SetFileSize(size) == 0);
  for (auto _ : state) {
    unsigned long long mapped = 0;
    benchmark::DoNotOptimize(file.MemMapAll(&mapped));
    Check(state, mapped == size);
    file.MemUnmapAll();
  }
}

const bool kMap = ratio::Pair(
    "MapAll of 1 GiB / of 1 MiB", 2.0, [](benchmark::State& state) { MapWhole(state, 1ULL << 30); },
    [](benchmark::State& state) { MapWhole(state, 1ULL << 20); });

}  // namespace
