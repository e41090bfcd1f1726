// How long things take. The limits are far from what a slow machine needs.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>

#include "host/validator/Picture.h"

namespace host::validator {
namespace {

using Clock = std::chrono::steady_clock;

std::string Milliseconds(double seconds) {
  char text[40];
  std::snprintf(text, sizeof(text), "%.1f ms", seconds * 1000);
  return text;
}

template <typename F>
double SecondsOf(F f) {
  const auto start = Clock::now();
  f();
  return std::chrono::duration<double>(Clock::now() - start).count();
}

// Of the processor: where other programs are busy too, the time on the wall tells of them.
double ProcessorSeconds() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

void DrawsQuickly(Trial& trial) {
  constexpr double kMost = 0.1;
  ForEachDrawn(trial, [&](const ClassCalls& cls, const Instance& object) {
    double least = 1e9;
    for (int i = 0; i < 11; ++i) {
      least = std::min(least, SecondsOf([&] { const Picture picture(cls, object, DrawJob()); }));
    }
    trial.Expect(least < kMost, "an object drawn within " + Milliseconds(kMost), Milliseconds(least));
  });
}

// The quickest of three thousands among the first of 10,000 objects, and among the last.
void ManyObjects(Trial& trial) {
  constexpr int kThousands = 10;
  constexpr double kNoise = 0.03;
  ForEachClass(trial, {}, [&](const ClassCalls& cls) {
    std::vector<Instance> all;
    std::vector<double> seconds;
    seconds.reserve(kThousands);
    for (int i = 0; i < kThousands; ++i) {
      const double start = ProcessorSeconds();
      for (int n = 0; n < 1000; ++n) {
        all.push_back(cls.Make());
        StateOf(cls, all.back());
      }
      seconds.push_back(ProcessorSeconds() - start);
    }
    const double first = *std::min_element(seconds.begin(), seconds.begin() + 3);
    const double last = *std::min_element(seconds.end() - 3, seconds.end());
    trial.Do("make 10,000 objects" + cls.Of());
    trial.Expect(last < 4 * first + kNoise, "the last thousand in the time of the first, " + Milliseconds(first),
                 Milliseconds(last));
  });
}

}  // namespace

std::vector<Check> TimeChecks() {
  return {
      {"time-draw", "An object is drawn in a tenth of a second at most, or the window stands still.", 2, &DrawsQuickly},
      {"time-many", "Among 10,000 objects one costs what it costs among a thousand.", 4, &ManyObjects},
  };
}

}  // namespace host::validator
