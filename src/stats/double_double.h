#pragma once

// Double-double arithmetic: a value held as the unevaluated sum hi + lo of two
// doubles with |lo| <= ulp(hi) / 2, giving about 32 significant digits.
//
// Algorithms: Knuth's TwoSum and Dekker's TwoProduct with Veltkamp splitting
// (T. J. Dekker, "A floating-point technique for extending the available
// precision", Numerische Mathematik 18, 1971), combined as in Hida, Li and
// Bailey's double-double library ("Algorithms for quad-double precision
// floating point arithmetic", ARITH-15, 2001).
//
// The distribution functions need it for one purpose: the exponent of a
// density such as exp(-x^2 / 2) or x^a e^-x reaches 700 in the far tails, and
// a double exponent carries an absolute error of 1e-13 there, which would be
// a relative error of 1e-13 in the probability. Forming the exponent in
// double-double keeps the probability accurate to a few units in the last
// place. Nothing here is public; the header is shared by the library's own
// source files.

#include <cmath>

namespace orvik::stats::detail {

struct DD {
  double hi = 0.0;
  double lo = 0.0;
};

// s + e = a + b exactly.
inline DD TwoSum(double a, double b) {
  const double s = a + b;
  const double bb = s - a;
  const double e = (a - (s - bb)) + (b - bb);
  return {s, e};
}

// Requires |a| >= |b| or a == 0.
inline DD QuickTwoSum(double a, double b) {
  const double s = a + b;
  return {s, b - (s - a)};
}

// p + e = a * b exactly, barring overflow and underflow.
inline DD TwoProduct(double a, double b) {
  const double p = a * b;
#if defined(__FMA__) || defined(__aarch64__)
  return {p, std::fma(a, b, -p)};
#else
  constexpr double kSplitter = 134217729.0;  // 2^27 + 1
  const double ta = kSplitter * a;
  const double ah = ta - (ta - a);
  const double al = a - ah;
  const double tb = kSplitter * b;
  const double bh = tb - (tb - b);
  const double bl = b - bh;
  return {p, ((ah * bh - p) + ah * bl + al * bh) + al * bl};
#endif
}

inline DD operator+(DD a, DD b) {
  DD s = TwoSum(a.hi, b.hi);
  const DD t = TwoSum(a.lo, b.lo);
  s.lo += t.hi;
  s = QuickTwoSum(s.hi, s.lo);
  s.lo += t.lo;
  return QuickTwoSum(s.hi, s.lo);
}

inline DD operator+(DD a, double b) {
  DD s = TwoSum(a.hi, b);
  s.lo += a.lo;
  return QuickTwoSum(s.hi, s.lo);
}

inline DD operator-(DD a) { return {-a.hi, -a.lo}; }
inline DD operator-(DD a, DD b) { return a + (-b); }
inline DD operator-(DD a, double b) { return a + (-b); }

inline DD operator*(DD a, DD b) {
  DD p = TwoProduct(a.hi, b.hi);
  p.lo += a.hi * b.lo + a.lo * b.hi;
  return QuickTwoSum(p.hi, p.lo);
}

inline DD operator*(DD a, double b) {
  DD p = TwoProduct(a.hi, b);
  p.lo += a.lo * b;
  return QuickTwoSum(p.hi, p.lo);
}

// Two quotient terms: accurate to about 2^-104 relative, which is all the
// callers need, at half the cost of a third correction.
inline DD operator/(DD a, DD b) {
  const double q1 = a.hi / b.hi;
  const DD r = a - b * q1;
  const double q2 = r.hi / b.hi;
  return QuickTwoSum(q1, q2);
}

inline DD Product(double a, double b) { return TwoProduct(a, b); }
inline DD Sum(double a, double b) { return TwoSum(a, b); }
inline DD Quotient(double a, double b) { return DD{a, 0.0} / DD{b, 0.0}; }

// Natural logarithm of a positive finite double (subnormals included) to
// about 1e-21 absolute (double_double.cpp).
DD LogDD(double x);

inline DD LogDD(DD x) { return LogDD(x.hi) + x.lo / x.hi; }

// exp(e) for an exponent held in double-double; |e.lo| is far below 1e-10,
// so exp(e.lo) = 1 + e.lo to full precision.
inline double ExpDD(DD e) { return std::exp(e.hi) * (1.0 + e.lo); }

}  // namespace orvik::stats::detail
