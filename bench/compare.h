#pragma once
// The measurement every benchmark here shares: the Jet way and its native reference, timed
// alternately in the same iterations so that both see the same machine.
#include <benchmark/benchmark.h>

#include <chrono>

// Times jet and native alternately; the benchmark's time is the Jet one, "ratio" compares.
template <class Jet, class Native>
void Compare(benchmark::State& state, Jet jet, Native native) {
  double jetSeconds = 0, nativeSeconds = 0;
  for (auto _ : state) {
    auto t0 = std::chrono::steady_clock::now();
    benchmark::DoNotOptimize(native());
    auto t1 = std::chrono::steady_clock::now();
    benchmark::DoNotOptimize(jet());
    auto t2 = std::chrono::steady_clock::now();
    nativeSeconds += std::chrono::duration<double>(t1 - t0).count();
    const double jetTime = std::chrono::duration<double>(t2 - t1).count();
    jetSeconds += jetTime;
    state.SetIterationTime(jetTime);
  }
  state.counters["ratio"] = nativeSeconds > 0 ? jetSeconds / nativeSeconds : 0;
}

