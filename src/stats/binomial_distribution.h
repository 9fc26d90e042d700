#pragma once

// The binomial distribution of the number of successes in n trials with
// success probability p, and the Poisson distribution with the given mean.
// The count k may be any number: P(X <= k) is that of its whole part.
// Every function returns NaN for a NaN argument, n not a whole number of at
// least 0, p outside [0, 1], a mean not positive and finite, or a
// probability outside [0, 1]; it never throws.

namespace orvik::stats {

// P(X <= k); 0 below 0, 1 from n on.
double GetDFBinomial(double k, double n, double p);
// P(X > k), computed directly.
double GetDFBinomialUpper(double k, double n, double p);
// P(X = k); 0 for k outside 0..n or not whole.
double BinomialProbability(double k, double n, double p);
// The least k with P(X <= k) >= prob.
double GetInvBinomial(double prob, double n, double p);
// The least k with P(X > k) <= q.
double GetInvBinomialUpper(double q, double n, double p);

double GetDFPoisson(double k, double mean);
double GetDFPoissonUpper(double k, double mean);
double PoissonProbability(double k, double mean);
double GetInvPoisson(double prob, double mean);
double GetInvPoissonUpper(double q, double mean);

}  // namespace orvik::stats
