#pragma once
// A small deterministic pseudo-random generator (splitmix64) for the demo data: the same
// seed gives the same sequence on every machine and compiler, unlike <random>'s
// distributions.
#include <cstdint>

namespace cp::sample {

class SplitMix64 {
 public:
  explicit SplitMix64(std::uint64_t seed) : state_(seed) {}

  // The next 64 random bits.
  std::uint64_t Next();
  // A number in [0, n); n must be positive.
  std::int64_t Below(std::int64_t n);
  // A number in [low, high], both included; high >= low.
  std::int64_t Between(std::int64_t low, std::int64_t high);
  // True with the given chance in percent (0 never, 100 always).
  bool Percent(int chance);

 private:
  std::uint64_t state_;
};

}  // namespace cp::sample
