// Readers and writers of numbers against scanf and printf, and the hash codes against a plain loop.
#include <bit>
#include <cstdint>
#include <cstdio>

#include "bench/Ratio.h"
#include "kit/text/AKTextConversions.h"

namespace {

const char* const kNumbers[] = {"0", "1.5", "-123.456789", "3.14159265358979", "44100", "1e-3", "0.000001", "99999.5"};
const double kValues[] = {0, 1.5, -123.456789, 3.14159265358979, 44100, 1e-3, 0.000001, 99999.5};
const char* const kRect = "(10.500000;-20.250000;1300.125000;440.000000)";

const bool kReadFloat = ratio::Pair(
    "strGetasFloat64", 1.0,
    [](benchmark::State& state) {
      double value = 0;
      for (auto _ : state) {
        for (const char* text : kNumbers) benchmark::DoNotOptimize(strGetasFloat64(text, &value, 0));
      }
    },
    [](benchmark::State& state) {
      double value = 0;
      for (auto _ : state) {
        for (const char* text : kNumbers) benchmark::DoNotOptimize(std::sscanf(text, "%lf", &value));
      }
    });

const bool kWriteFloat = ratio::Pair(
    "strSetasFloat64, 6 decimals", 1.0,
    [](benchmark::State& state) {
      char text[400];
      for (auto _ : state) {
        for (const double value : kValues) benchmark::DoNotOptimize(strSetasFloat64(text, value, 6));
      }
    },
    [](benchmark::State& state) {
      char text[400];
      for (auto _ : state) {
        for (const double value : kValues) {
          benchmark::DoNotOptimize(std::snprintf(text, sizeof(text), "%.6f", value));
          benchmark::ClobberMemory();
        }
      }
    });

const bool kReadRect = ratio::Pair(
    "strGetasAGRect", 0.5,
    [](benchmark::State& state) {
      AGRect rect;
      for (auto _ : state) benchmark::DoNotOptimize(strGetasAGRect(kRect, &rect, {}));
    },
    [](benchmark::State& state) {
      AGRect r;
      for (auto _ : state) {
        benchmark::DoNotOptimize(std::sscanf(kRect, "(%lf;%lf;%lf;%lf)", &r.x0, &r.y0, &r.x1, &r.y1));
      }
    });

template <typename Hash>
Hash PlainLoop(const unsigned char* bytes, unsigned int length) {
  Hash hash = 0;
  for (unsigned int i = 0; i < length; ++i) hash = std::rotl(hash, 7) + bytes[i];
  return hash;
}

template <typename Hash, typename Function>
bool AddHash(const char* name, Function function) {
  const AKString text(std::string(4096, 'x'));
  return ratio::Pair(
      name, 1.1,
      [text, function](benchmark::State& state) {
        for (auto _ : state) benchmark::DoNotOptimize(function(text));
      },
      [text](benchmark::State& state) {
        const auto* const bytes = reinterpret_cast<const unsigned char*>(text.CStr());
        for (auto _ : state) {
          benchmark::DoNotOptimize(PlainLoop<Hash>(bytes, text.Length()));
          benchmark::ClobberMemory();
        }
      });
}

const bool kHash = AddHash<std::uint32_t>("AKStringComputeHashCode32 of 4 KiB", AKStringComputeHashCode32) &&
                   AddHash<std::uint64_t>("AKStringComputeHashCode64 of 4 KiB", AKStringComputeHashCode64);

}  // namespace
