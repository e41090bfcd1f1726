#include "bench/Ratio.h"

#include <algorithm>
#include <cstdio>
#include <map>
#include <vector>

namespace ratio {
namespace {

struct PairRecord {
  std::string name;
  double target;
  double bytes;
  bool byTheClock;
};

std::vector<PairRecord>& Pairs() {
  static std::vector<PairRecord> pairs;
  return pairs;
}

double Median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

bool IsByTheClock(const std::string& function) {
  return std::any_of(Pairs().begin(), Pairs().end(), [&function](const PairRecord& pair) {
    return pair.byTheClock && function.starts_with(pair.name + "|");
  });
}

bool Register(const PairRecord& pair, const Body& kit, const Body& reference) {
  Pairs().push_back(pair);
  for (auto* registered : {benchmark::RegisterBenchmark((pair.name + "|kit").c_str(), kit),
                           benchmark::RegisterBenchmark((pair.name + "|reference").c_str(), reference)}) {
    registered->Repetitions(5)->MinTime(0.05)->Unit(benchmark::kNanosecond);
    if (pair.byTheClock) registered->UseRealTime();
  }
  return true;
}

// Keeps the time of every repetition under its benchmark's name and prints nothing itself.
class TimeCollector : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration) continue;
      if (run.error_occurred) {
        std::fprintf(stderr, "%s: %s\n", run.benchmark_name().c_str(), run.error_message.c_str());
        failed_ = true;
        continue;
      }
      const std::string& function = run.run_name.function_name;
      times_[function].push_back(IsByTheClock(function) ? run.GetAdjustedRealTime() : run.GetAdjustedCPUTime());
    }
  }

  bool PrintTable() const {
    std::printf("%-52s %14s %14s %8s %15s %8s\n", "pair", "kit (ns)", "reference (ns)", "ratio", "its rounds",
                "target");
    for (const PairRecord& pair : Pairs()) {
      const std::vector<double> kit = TimesOf(pair.name + "|kit");
      const std::vector<double> reference = TimesOf(pair.name + "|reference");
      if (kit.empty() || reference.empty()) continue;  // left out by a filter
      PrintPair(pair, kit, reference);
    }
    return !failed_;
  }

 private:
  // The ratio of the medians, and the least and the greatest ratio of one round.
  static void PrintPair(const PairRecord& pair, const std::vector<double>& kit, const std::vector<double>& reference) {
    std::vector<double> rounds;
    for (std::size_t i = 0; i < std::min(kit.size(), reference.size()); ++i) rounds.push_back(kit[i] / reference[i]);
    const auto [least, greatest] = std::minmax_element(rounds.begin(), rounds.end());
    const double kitTime = Median(kit);
    const double referenceTime = Median(reference);
    const double value = kitTime / referenceTime;
    std::printf("%-52s %14.0f %14.0f %8.3f %7.3f-%7.3f ", pair.name.c_str(), kitTime, referenceTime, value, *least,
                *greatest);
    if (pair.target > 0) {
      std::printf("%8.2f%s", pair.target, value > pair.target ? "  MISSED" : "");
    } else {
      std::printf("%8s", "-");
    }
    if (pair.bytes > 0) std::printf("  %.1f against %.1f GB/s", pair.bytes / kitTime, pair.bytes / referenceTime);
    std::printf("\n");
  }

  std::vector<double> TimesOf(const std::string& name) const {
    const auto found = times_.find(name);
    return found == times_.end() ? std::vector<double>() : found->second;
  }

  std::map<std::string, std::vector<double>> times_;
  bool failed_ = false;
};

}  // namespace

bool Pair(const std::string& name, double target, Body kit, Body reference, double bytes) {
  return Register({name, target, bytes, false}, kit, reference);
}

bool PairByTheClock(const std::string& name, double target, Body kit, Body reference) {
  return Register({name, target, 0, true}, kit, reference);
}

}  // namespace ratio

int main(int argc, char** argv) {
  // Interleaved repetitions let a change of the machine's speed touch both sides of a pair alike.
  std::vector<char*> arguments(argv, argv + argc);
  std::string interleave = "--benchmark_enable_random_interleaving=true";
  arguments.push_back(interleave.data());
  int count = static_cast<int>(arguments.size());
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;
  ratio::TimeCollector collector;
  benchmark::RunSpecifiedBenchmarks(&collector);
  return collector.PrintTable() ? 0 : 1;
}
