#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orvik::analyses {

// Two-level factorial designs of 2 to 5 factors in Yates' standard order:
// run i (from 0) has factor j (from 0) at its high level when bit j of i is
// set, so factor A alternates fastest.

// The letter of factor j: 'A' for 0, 'B' for 1, ...
char FactorLetter(int factor);

// The treatment combination of a run given by the set of its factors at the
// high level (bit j: factor j): the lower-case letters of those factors in
// order, "(1)" when none is high.
std::string TreatmentLabel(unsigned high_factors);

// The name of an effect given by its set of factors: "A", "AB", "ACD".
std::string EffectName(unsigned factors);

// The effects of k factors in Yates order (A, B, AB, C, AC, BC, ABC, ...),
// each as its set of factors: 1, 2, 3, ..., 2^k - 1.
std::vector<unsigned> YatesEffects(int factors);

// One run of a factorial plan: its factors at the high level (bit j), or a
// centre point where every factor sits at its middle setting.
struct FactorialRun {
  unsigned highFactors = 0;
  bool centre = false;
};

// The runs of a 2^k design (or its principal half fraction 2^(k-1), whose
// last factor is the product of the others, I = +AB...K) in standard order:
// each replicate in the Yates order of the base design, replicate after
// replicate, then `centre_points` centre points.
std::vector<FactorialRun> FactorialRuns(int factors, bool half_fraction, int replicates, int centre_points);

// The defining relation of the principal half fraction of k factors:
// "I = ABCD" for four.
std::string DefiningRelation(int factors);

// The aliases of the main effects and two-factor interactions in the half
// fraction, each pair once, main effects first: "A = BCD", ..., "AB = CD".
std::vector<std::string> AliasLines(int factors);

// A random order of n runs: position p holds the standard order (from 1) of
// the run made p-th. Fisher and Yates's shuffle driven by the 32-bit
// Mersenne Twister (whose sequence the C++ standard fixes) with rejection
// of the biased draws, so one seed gives the same order on every platform.
std::vector<long> RunOrderPermutation(long n, std::uint32_t seed);

}  // namespace orvik::analyses
