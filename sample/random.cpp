#include "sample/random.h"

namespace cp::sample {

std::uint64_t SplitMix64::Next() {
  std::uint64_t z = (state_ += 0x9E3779B97F4A7C15ull);
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
  return z ^ (z >> 31);
}

std::int64_t SplitMix64::Below(std::int64_t n) {
  // Multiply-shift keeps the result in range without a division; the bias is negligible
  // for the small ranges the demo data uses.
  return static_cast<std::int64_t>(
      (static_cast<unsigned __int128>(Next()) * static_cast<std::uint64_t>(n)) >> 64);
}

std::int64_t SplitMix64::Between(std::int64_t low, std::int64_t high) {
  return low + Below(high - low + 1);
}

bool SplitMix64::Percent(int chance) { return Below(100) < chance; }

}  // namespace cp::sample
