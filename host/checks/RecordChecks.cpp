// Records: what a class writes of an object, and what becomes of it when it is read.
#include "host/validator/States.h"
#include "host/validator/Subject.h"
#include "host/validator/Values.h"
#include "kit/streams/AKFile.h"

namespace host::validator {
namespace {

constexpr char kBefore[] = "what stands before";
constexpr std::size_t kBeforeSize = sizeof(kBefore) - 1;

void ForEachRecorded(Trial& trial, const std::function<void(const ClassCalls& cls)>& f) {
  ForEachClass(trial, {kAKMethodWriteToFile, kAKMethodInitFromFile}, f);
}

Bytes ContentOf(const AKFile& file) {
  const void* data = nullptr;
  unsigned long long size = 0;
  file.GetMemoryStreamDataPtr(&data, &size);
  return data == nullptr ? Bytes() : Bytes(static_cast<const char*>(data), static_cast<std::size_t>(size));
}

unsigned long long PositionOf(const AKFile& file) {
  unsigned long long position = 0;
  file.GetPos(&position);
  return position;
}

void Same(Trial& trial) {
  ForEachRecorded(trial, [&](const ClassCalls& cls) {
    const Instance object = cls.Make();
    const Bytes first = cls.Write(object);
    const Bytes second = cls.Write(object);
    trial.Expect(first == second, "the same again: " + TextOfBytes(first), TextOfBytes(second));
  });
}

void RoundTrip(Trial& trial) {
  ForEachRecorded(trial, [&](const ClassCalls& cls) {
    for (std::size_t step = 0; step < trial.Cases(50); ++step) {
      if (!trial.Wants(step)) continue;
      Dice dice = trial.DiceOf(step);
      const Instance object = RandomObject(cls, &dice);
      const Bytes written = cls.Write(object);
      const Bytes again = cls.Write(cls.MakeFrom(written));
      trial.Expect(written == again, "the same bytes: " + TextOfBytes(written), TextOfBytes(again));
    }
  });
}

// Two values that the object tells apart are two after they were saved and loaded.
void Keeps(Trial& trial) {
  ForEachRecorded(trial, [&](const ClassCalls& cls) {
    for (const Entry& entry : EntriesOf(cls.Get(cls.Make()))) {
      AKDictionary last;
      AKDictionary lastRead;
      for (const AKValue& value : OrdinaryValues(entry.value)) {
        const Instance object = cls.Make();
        if (cls.Set(object, entry.key, value) != 0) continue;
        const AKDictionary own = cls.Get(object);
        const AKDictionary read = cls.Get(cls.MakeFrom(cls.Write(object)));
        const bool isOther = !last.IsEmpty() && !IsSame(own, last);
        trial.Do("set \"" + std::string(entry.key.CStr()) + "\" to two values, write and read both" + cls.Of());
        trial.Expect(!isOther || !IsSame(read, lastRead),
                     "two objects that differ: " + TextOfAll(own) + " and " + TextOfAll(last),
                     "twice " + TextOfAll(read));
        last = own;
        lastRead = read;
      }
    }
  });
}

void WritesInPlace(Trial& trial) {
  ForEachRecorded(trial, [&](const ClassCalls& cls) {
    const Instance object = cls.Make();
    const Bytes record = cls.Write(object);
    AKFile file(AKFile::kModeMemory);
    file.CreateForReadWrite();
    file.Write(kBefore, kBeforeSize);
    cls.WriteTo(object, file);
    trial.Expect(PositionOf(file) == kBeforeSize + record.size(), "the stream stands behind the record",
                 "it stands at " + std::to_string(PositionOf(file)) + " of " + std::to_string(ContentOf(file).size()));
    trial.Expect(ContentOf(file) == kBefore + record, "the record behind what was there", TextOfBytes(ContentOf(file)));
  });
}

void ReadsInPlace(Trial& trial) {
  ForEachRecorded(trial, [&](const ClassCalls& cls) {
    const Bytes record = cls.Write(cls.Make());
    const Bytes all = kBefore + record;
    AKFile file(all.data(), static_cast<unsigned int>(all.size()));
    file.OpenForRead();
    file.SetPos(kBeforeSize);
    const Instance object = cls.Construct();
    trial.Do("akmInitFromFile where the stream stands, behind " + std::to_string(kBeforeSize) + " other bytes" +
             cls.Of());
    const int status = cls.ReadFrom(object, file);
    trial.Expect(status == 0, "status 0", StatusText(status));
    const Bytes again = cls.Write(object);
    trial.Expect(again == record, TextOfBytes(record), TextOfBytes(again));
  });
}

void KeepsByteOrder(Trial& trial) {
  ForEachRecorded(trial, [&](const ClassCalls& cls) {
    const Instance object = cls.Make();
    for (const unsigned int order : {AKFile::kEndianLittle, AKFile::kEndianBig}) {
      AKFile file(AKFile::kModeMemory);
      file.CreateForReadWrite();
      file.SetEndianness(order);
      cls.WriteTo(object, file);
      trial.Expect(file.Endianness() == order, "the stream's order of bytes stays", "it was changed");
      file.SetPos(0);
      trial.Do("akmInitFromFile from a stream of byte order " + std::to_string(order) + cls.Of());
      const Instance copy = cls.Construct();
      const int status = cls.ReadFrom(copy, file);
      trial.Expect(status == 0, "status 0", StatusText(status));
      trial.Expect(file.Endianness() == order, "the stream's order of bytes stays", "it was changed");
      trial.Expect(cls.Write(copy) == cls.Write(object), TextOfBytes(cls.Write(object)), TextOfBytes(cls.Write(copy)));
    }
  });
}

void OwnBytes(Trial& trial) {
  ForEachRecorded(trial, [&](const ClassCalls& cls) {
    const Bytes record = cls.Write(cls.Make());
    for (const char* more : {"\x01", "12345678", "what follows it in the stream, and is another object's"}) {
      std::size_t rest = 0;
      cls.Read(cls.Construct(), record + more, kRecordVersion, &rest);
      trial.Expect(rest == std::string(more).size(),
                   "the stream stands behind the record of " + std::to_string(record.size()) + " bytes",
                   std::to_string(record.size() + std::string(more).size() - rest) + " bytes were read");
    }
  });
}

void Longer(Trial& trial) {
  ForEachRecorded(trial, [&](const ClassCalls& cls) {
    const Bytes record = cls.Write(cls.Make());
    for (const unsigned char byte : {0x00, 0xFF, 0x41}) {
      const Instance object = cls.Construct();
      const int status = cls.Read(object, record + Bytes(64, static_cast<char>(byte)));
      trial.Expect(status == 0, "status 0 for a record with bytes behind it", StatusText(status));
      const Bytes again = cls.Write(object);
      trial.Expect(again == record, TextOfBytes(record), TextOfBytes(again));
    }
  });
}

void Versions(Trial& trial) {
  ForEachRecorded(trial, [&](const ClassCalls& cls) {
    const Bytes record = cls.Write(cls.Make());
    for (const unsigned int version : {0U, 1U, 2U, 3U, 100U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
      const Instance object = cls.Construct();
      const int status = cls.Read(object, record, version);
      trial.Expect(version != kRecordVersion || status == 0, "status 0", StatusText(status));
      if (status != 0) continue;
      StateOf(cls, object);
    }
  });
}

void Reinits(Trial& trial) {
  ForEachRecorded(trial, [&](const ClassCalls& cls) {
    for (std::size_t step = 0; step < trial.Cases(20); ++step) {
      if (!trial.Wants(step)) continue;
      Dice dice = trial.DiceOf(step);
      const Bytes record = cls.Write(RandomObject(cls, &dice));
      const Instance object = RandomObject(cls, &dice);
      const int status = cls.Read(object, record);
      trial.Expect(status == 0, "status 0", StatusText(status));
      const Bytes again = cls.Write(object);
      trial.Do("read a record into an object that had another state, and write it" + cls.Of());
      trial.Expect(again == record, TextOfBytes(record), TextOfBytes(again));
    }
  });
}

void ReadFailures(Trial& trial) {
  ForEachRecorded(trial, [&](const ClassCalls& cls) {
    if (cls.Write(cls.Make()).empty()) return;
    const int empty = cls.Read(cls.Construct(), "");
    trial.Expect(empty != 0, "a status that tells that the record is not there", "status 0");
    const AKFile closed(AKFile::kModeMemory);
    trial.Do("akmInitFromFile from a stream that is not open" + cls.Of());
    const int status = cls.ReadFrom(cls.Construct(), closed);
    trial.Expect(status != 0, "the stream's status", "status 0");
  });
}

void WriteFailures(Trial& trial) {
  ForEachRecorded(trial, [&](const ClassCalls& cls) {
    const Instance object = cls.Make();
    if (cls.Write(object).empty()) return;
    AKFile file("", 0);
    file.OpenForRead();
    const int status = cls.WriteTo(object, file);
    trial.Do("akmWriteToFile to a stream that takes nothing" + cls.Of());
    trial.Expect(status != 0, "the stream's status", "status 0");
  });
}

}  // namespace

std::vector<Check> RecordChecks() {
  return {
      {"record-same", "Written twice the record is the same, or an undo finds changes that nobody made.", 1, &Same},
      {"record-roundtrip", "A record that was read is written again with the same bytes.", 2, &RoundTrip},
      {"record-keeps", "Everything that can be set is in the record, or undo and saving lose it.", 2, &Keeps},
      {"record-writes-in-place", "The record goes where the stream stands, and the stream stands behind it then.", 2,
       &WritesInPlace},
      {"record-reads-in-place", "The record is read from where the stream stands.", 2, &ReadsInPlace},
      {"record-byte-order", "The stream keeps its order of bytes, which counts for all that follows.", 2,
       &KeepsByteOrder},
      {"record-own-bytes", "No more is read than was written: what follows belongs to others.", 2, &OwnBytes},
      {"record-longer", "A longer record of a later version is read as far as it is known.", 2, &Longer},
      {"record-versions", "Other versions are read or refused by a status.", 2, &Versions},
      {"record-replaces", "A record that is read replaces the whole state, not a part of it.", 2, &Reinits},
      {"record-read-status", "A record that can't be read is told by the status, or the object is lost silently.", 2,
       &ReadFailures},
      {"record-write-status", "A record that can't be written is told by the status, or a full disk loses the object.",
       2, &WriteFailures},
  };
}

}  // namespace host::validator
