#pragma once

// The lognormal distribution: ln X is normal with mean `mu` (the location of
// the log) and standard deviation `sigma` (its scale). Every function returns
// NaN for a NaN argument, mu not finite, sigma not positive and finite, or a
// probability outside [0, 1]; it never throws.

namespace orvik::stats {

// P(X <= x); 0 for x <= 0.
double GetDFLognormal(double x, double mu, double sigma);
// P(X > x), from the normal upper tail; 1 for x <= 0.
double GetDFLognormalUpper(double x, double mu, double sigma);
// x with P(X <= x) = p; 0 for p = 0, +infinity for p = 1.
double GetInvLognormal(double p, double mu, double sigma);
// x with P(X > x) = q.
double GetInvLognormalUpper(double q, double mu, double sigma);
// The density; 0 for x <= 0.
double LognormalDensity(double x, double mu, double sigma);

}  // namespace orvik::stats
