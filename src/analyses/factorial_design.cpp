#include "analyses/factorial_design.h"

#include <bit>
#include <numeric>
#include <random>

namespace orvik::analyses {

char FactorLetter(int factor) { return static_cast<char>('A' + factor); }

std::string TreatmentLabel(unsigned high_factors) {
  if (high_factors == 0) return "(1)";
  std::string label;
  for (int j = 0; (high_factors >> j) != 0; ++j)
    if ((high_factors >> j) & 1U) label += static_cast<char>('a' + j);
  return label;
}

std::string EffectName(unsigned factors) {
  std::string name;
  for (int j = 0; (factors >> j) != 0; ++j)
    if ((factors >> j) & 1U) name += FactorLetter(j);
  return name;
}

std::vector<unsigned> YatesEffects(int factors) {
  std::vector<unsigned> effects((1U << factors) - 1);
  std::iota(effects.begin(), effects.end(), 1U);
  return effects;
}

std::vector<FactorialRun> FactorialRuns(int factors, bool half_fraction, int replicates, int centre_points) {
  const int base = half_fraction ? factors - 1 : factors;
  const unsigned last = 1U << (factors - 1);
  std::vector<FactorialRun> runs;
  for (int r = 0; r < replicates; ++r) {
    for (unsigned i = 0; i < (1U << base); ++i) {
      unsigned high = i;
      // The generated factor is high when an even number of the others is
      // low: the product of their signs is +1.
      if (half_fraction && ((base - std::popcount(i)) % 2 == 0)) high |= last;
      runs.push_back({high, false});
    }
  }
  for (int c = 0; c < centre_points; ++c) runs.push_back({0, true});
  return runs;
}

std::string DefiningRelation(int factors) { return "I = " + EffectName((1U << factors) - 1); }

std::vector<std::string> AliasLines(int factors) {
  const unsigned all = (1U << factors) - 1;
  std::vector<std::string> lines;
  std::vector<bool> listed(all + 1, false);
  for (const int order : {1, 2}) {
    for (const unsigned effect : YatesEffects(factors)) {
      if (std::popcount(effect) != order || listed[effect]) continue;
      const unsigned alias = all ^ effect;
      listed[effect] = listed[alias] = true;
      lines.push_back(EffectName(effect) + " = " + EffectName(alias));
    }
  }
  return lines;
}

std::vector<long> RunOrderPermutation(long n, std::uint32_t seed) {
  std::vector<long> order(static_cast<std::size_t>(n));
  std::iota(order.begin(), order.end(), 1L);
  std::mt19937 engine(seed);
  for (long i = n - 1; i > 0; --i) {
    // A uniform draw from 0..i: reject the top of the range that does not
    // divide evenly.
    const std::uint64_t span = static_cast<std::uint64_t>(i) + 1;
    const std::uint64_t limit = (std::uint64_t{1} << 32) - ((std::uint64_t{1} << 32) % span);
    std::uint64_t draw = engine();
    while (draw >= limit) draw = engine();
    std::swap(order[static_cast<std::size_t>(i)], order[static_cast<std::size_t>(draw % span)]);
  }
  return order;
}

}  // namespace orvik::analyses
