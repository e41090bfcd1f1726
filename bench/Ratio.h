// Benchmarks in pairs: the kit's way and what a user would pick instead, measured in one run and printed as a ratio.
#pragma once

#include <benchmark/benchmark.h>

#include <functional>
#include <string>

namespace ratio {

/// One measured body: it loops over the state as any Google Benchmark function does.
using Body = std::function<void(benchmark::State&)>;

/// Registers a pair. `target` is the largest ratio of times, kit / reference, that the project aims at; 0 states none.
/// `bytes`, when not 0, is what one iteration of either side reads; the table then shows both rates in GB/s.
/// Returns true so that a pair can be registered by initialising a constant.
bool Pair(const std::string& name, double target, Body kit, Body reference, double bytes = 0);
/// The same by the clock instead of by processor time: for work of which waiting for the disk is a part.
bool PairByTheClock(const std::string& name, double target, Body kit, Body reference);

}  // namespace ratio
