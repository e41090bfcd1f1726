// Records that were damaged on the way: a class reads any bytes without harm.
#include "graphics/bitmaps/AGBitmap.h"
#include "graphics/context/AKDrawEvent.h"
#include "host/validator/States.h"

namespace host::validator {
namespace {

constexpr std::size_t kMostBits = 8192;  // of longer records a random part

void ForEachRecorded(Trial& trial, const std::function<void(const ClassCalls& cls)>& f) {
  ForEachClass(trial, {kAKMethodWriteToFile, kAKMethodInitFromFile}, f);
}

// Whatever was read: what is accepted can be drawn, and written so that it can be read again.
void ExpectBears(Trial& trial, const ClassCalls& cls, const Bytes& record) {
  const Instance object = cls.Construct();
  if (cls.Read(object, record) != 0) return;
  cls.Get(object);
  const Bytes written = cls.Write(object);
  static const AGBitmap bitmap(64, 64, AGBitmap::kFlagZeroFill);
  AKDrawEvent event;
  event.bounds = {8, 8, 56, 56};
  cls.Draw(object, bitmap.GetContextOfBitmap(), event);
  const int status = cls.Read(cls.Construct(), written);
  trial.Expect(status == 0, "what it accepts it writes so that it can be read", StatusText(status));
}

void Prefixes(Trial& trial) {
  ForEachRecorded(trial, [&](const ClassCalls& cls) {
    const Bytes record = cls.Write(cls.Make());
    for (std::size_t size = 0; size < record.size(); ++size) {
      if (trial.Wants(size)) ExpectBears(trial, cls, record.substr(0, size));
    }
  });
}

void BitFlips(Trial& trial) {
  ForEachRecorded(trial, [&](const ClassCalls& cls) {
    const Bytes record = cls.Write(cls.Make());
    const std::size_t bits = record.size() * 8;
    for (std::size_t step = 0; step < std::min(bits, kMostBits); ++step) {
      if (!trial.Wants(step)) continue;
      const std::size_t bit = bits <= kMostBits ? step : trial.DiceOf(step).Below(bits);
      Bytes flipped = record;
      flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << (bit % 8)));
      ExpectBears(trial, cls, flipped);
    }
  });
}

void RandomBytes(Trial& trial) {
  ForEachRecorded(trial, [&](const ClassCalls& cls) {
    const std::size_t size = cls.Write(cls.Make()).size();
    for (std::size_t step = 0; step < trial.Cases(500); ++step) {
      if (!trial.Wants(step)) continue;
      Dice dice = trial.DiceOf(step);
      Bytes record(dice.Below(2 * size + 16), '\0');
      for (char& byte : record) byte = static_cast<char>(dice.Next());
      ExpectBears(trial, cls, record);
    }
  });
}

// Several bytes at once, towards the values at which numbers end.
void Garbled(Trial& trial) {
  static constexpr unsigned char kEdges[] = {0x00, 0x01, 0x7F, 0x80, 0xFE, 0xFF};
  ForEachRecorded(trial, [&](const ClassCalls& cls) {
    for (std::size_t step = 0; step < trial.Cases(500); ++step) {
      if (!trial.Wants(step)) continue;
      Dice dice = trial.DiceOf(step);
      Bytes record = cls.Write(RandomObject(cls, &dice));
      const unsigned char edge = kEdges[dice.Below(std::size(kEdges))];
      const std::size_t begin = dice.Below(record.size());
      const std::size_t end = std::min(record.size(), begin + 1 + dice.Below(8));
      for (std::size_t at = begin; at < end; ++at) record[at] = static_cast<char>(edge);
      ExpectBears(trial, cls, record);
    }
  });
}

}  // namespace

std::vector<Check> DamageChecks() {
  return {
      {"record-prefixes", "A record that ends too early, at each of its bytes, is refused or borne.", 2, &Prefixes},
      {"record-bit-flips", "A record with one wrong bit, each in turn, is refused or borne.", 3, &BitFlips},
      {"record-garbled", "A record with a few wrong bytes is refused or borne.", 4, &Garbled},
      {"record-random", "Random bytes are refused or borne as a record.", 4, &RandomBytes},
  };
}

}  // namespace host::validator
