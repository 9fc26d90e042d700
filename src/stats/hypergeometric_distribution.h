#pragma once

// The hypergeometric distribution: the number of successes in a sample of
// n drawn without replacement from a population of `population` items of
// which `successes` are successes. The support runs from
// max(0, n - (population - successes)) to min(n, successes). The count k
// may be any number: P(X <= k) is that of its whole part. Every function
// returns NaN for a NaN argument, sizes that are not whole numbers with
// 0 <= successes <= population and 0 <= n <= population, or a probability
// outside [0, 1]; it never throws.

namespace orvik::stats {

// P(X <= k); 0 below the support, 1 from its top on.
double GetDFHypergeometric(double k, double population, double successes, double n);
// P(X > k), computed directly where it is the smaller tail.
double GetDFHypergeometricUpper(double k, double population, double successes, double n);
// P(X = k); 0 outside the support or for k not whole.
double HypergeometricProbability(double k, double population, double successes, double n);
// The least k with P(X <= k) >= prob.
double GetInvHypergeometric(double prob, double population, double successes, double n);
// The least k with P(X > k) <= q.
double GetInvHypergeometricUpper(double q, double population, double successes, double n);

}  // namespace orvik::stats
