// Strings against std::string, and character sets against the C library's iconv.
#include <iconv.h>

#include <string>
#include <vector>

#include "bench/Ratio.h"
#include "kit/text/AKStringArray.h"
#include "kit/text/AKStringEncoding.h"

namespace {

/// Prose of the given length: words of two to nine letters, now and then with a comma.
std::string Prose(std::size_t length) {
  std::string text;
  unsigned int state = 12345;
  while (text.size() < length) {
    state = state * 1103515245 + 12345;
    for (unsigned int n = 2 + state / 65536 % 8; n > 0; --n) {
      state = state * 1103515245 + 12345;
      text += "etaoinshrdlucmfwypvbgk"[state / 65536 % 22];
    }
    text += state / 65536 % 7 == 0 ? ", " : " ";
  }
  text.resize(length);
  return text;
}

const std::string& Text() {
  static const std::string text = Prose(64U << 10);
  return text;
}

const bool kCopy = ratio::Pair(
    "copy of a string of 1 KiB", 0.3,
    [](benchmark::State& state) {
      const AKString text(Prose(1024));
      for (auto _ : state) {
        AKString copy(text);
        benchmark::DoNotOptimize(copy);
      }
    },
    [](benchmark::State& state) {
      const std::string text = Prose(1024);
      for (auto _ : state) {
        std::string copy(text);
        benchmark::DoNotOptimize(copy);
      }
    });

void AddFind(const std::string& name, double target, const std::string& sought) {
  ratio::Pair(
      "Find in 64 KiB, " + name, target,
      [sought](benchmark::State& state) {
        const AKString text(Text());
        const AKString sub(sought);
        unsigned int pos = 0;
        for (auto _ : state) benchmark::DoNotOptimize(text.Find(sub, 0, &pos));
      },
      [sought](benchmark::State& state) {
        for (auto _ : state) benchmark::DoNotOptimize(Text().find(sought, 0));
      });
}

const bool kFind = [] {
  // Without a candidate both are one call of memchr: they differ by the noise of the measurement.
  constexpr double kEqual = 1.05;
  AddFind("rare first byte", kEqual, "!missing");
  AddFind("common first byte", 1.0, "energize");
  AddFind("one byte", kEqual, "!");
  return true;
}();

std::string ReplaceAll(std::string text, const std::string& find, const std::string& with) {
  for (std::size_t at = 0; (at = text.find(find, at)) != std::string::npos; at += with.size()) {
    text.replace(at, find.size(), with);
  }
  return text;
}

void AddReplace(const std::string& name, const std::string& find, const std::string& with) {
  ratio::Pair(
      "ReplaceAll in 64 KiB, " + name, 1.0,
      [find, with](benchmark::State& state) {
        const AKString text(Text());
        const AKString sought(find);
        const AKString put(with);
        for (auto _ : state) {
          AKString copy(text);
          benchmark::DoNotOptimize(copy.ReplaceAll(sought, put, 0));
        }
      },
      [find, with](benchmark::State& state) {
        for (auto _ : state) benchmark::DoNotOptimize(ReplaceAll(Text(), find, with));
      });
}

const bool kReplace = [] {
  AddReplace("same length", ", ", "; ");
  AddReplace("longer", ", ", " and ");
  AddReplace("few places", "zz", "y");
  return true;
}();

/// The plain way: find_first_of for the separators, and for the ends of the piece.
std::vector<std::string> Split(const std::string& text) {
  std::vector<std::string> pieces;
  for (std::size_t start = 0;;) {
    const std::size_t stop = std::min(text.find_first_of(",;", start), text.size());
    const std::string piece = text.substr(start, stop - start);
    const std::size_t first = piece.find_first_not_of(" \t\n\r");
    const std::size_t last = piece.find_last_not_of(" \t\n\r");
    pieces.push_back(first == std::string::npos ? std::string() : piece.substr(first, last - first + 1));
    if (stop == text.size()) return pieces;
    start = stop + 1;
  }
}

const bool kSplit = ratio::Pair(
    "SplitToArray of 64 KiB", 1.0,
    [](benchmark::State& state) {
      const AKString text(Text());
      for (auto _ : state) benchmark::DoNotOptimize(text.SplitToArray());
    },
    [](benchmark::State& state) {
      for (auto _ : state) benchmark::DoNotOptimize(Split(Text()));
    });

const bool kAppend = ratio::Pair(
    "Append of 1000 single characters", 1.0,
    [](benchmark::State& state) {
      for (auto _ : state) {
        AKString text;
        for (int i = 0; i < 1000; ++i) text.Append(static_cast<char>(i));
        benchmark::DoNotOptimize(text);
      }
    },
    [](benchmark::State& state) {
      for (auto _ : state) {
        std::string text;
        for (int i = 0; i < 1000; ++i) text += static_cast<char>(i);
        benchmark::DoNotOptimize(text);
      }
    });

/// Converts with an open converter into a string made for the result, as a careful user of iconv would.
std::string Iconv(iconv_t converter, const std::string& text) {
  std::string result(text.size() * 3, '\0');
  char* in = const_cast<char*>(text.data());  // iconv does not write to its input
  char* out = result.data();
  std::size_t inLeft = text.size();
  std::size_t outLeft = result.size();
  iconv(converter, &in, &inLeft, &out, &outLeft);
  result.resize(result.size() - outLeft);
  return result;
}

void AddConversion(const std::string& name, double target, const std::string& text) {
  ratio::Pair(
      "Mac OS Roman to UTF-8 and back, 1 MiB, " + name, target,
      [text](benchmark::State& state) {
        const AKString roman(text);
        for (auto _ : state) {
          const AKString utf8 = AKStringCopyWithEncoding(roman, kAKStringEncodingMacRoman, kAKStringEncodingUTF8);
          benchmark::DoNotOptimize(AKStringCopyWithEncoding(utf8, kAKStringEncodingUTF8, kAKStringEncodingMacRoman));
        }
      },
      [text](benchmark::State& state) {
        const iconv_t toUtf8 = iconv_open("UTF-8", "MACINTOSH");
        const iconv_t toRoman = iconv_open("MACINTOSH", "UTF-8");
        for (auto _ : state) benchmark::DoNotOptimize(Iconv(toRoman, Iconv(toUtf8, text)));
        iconv_close(toUtf8);
        iconv_close(toRoman);
      });
}

const bool kConversion = [] {
  const std::string ascii = Prose(1U << 20);
  std::string mixed = ascii;  // French has an accent every eight or nine letters
  for (std::size_t i = 0; i < mixed.size(); i += 5 + i % 8) mixed[i] = static_cast<char>(0x88 + i % 24);
  AddConversion("ASCII", 0.1, ascii);
  AddConversion("mixed", 1.0 / 3, mixed);
  return true;
}();

}  // namespace
