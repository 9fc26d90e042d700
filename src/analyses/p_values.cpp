#include "analyses/p_values.h"

#include <algorithm>

#include "stats/chi_square_distribution.h"
#include "stats/f_distribution.h"
#include "stats/normal_distribution.h"
#include "stats/t_distribution.h"

namespace orvik::analyses {

Tails NormalTails(double z) { return {stats::GetDFNormal(z, 0.0, 1.0), stats::GetDFNormalUpper(z, 0.0, 1.0)}; }

Tails TTails(double t, double df) { return {stats::GetDFT(t, df), stats::GetDFTUpper(t, df)}; }

Tails ChiSquareTails(double chi_square, double df) {
  return {stats::GetDFChisq(chi_square, df), stats::GetDFChisqUpper(chi_square, df)};
}

Tails FTails(double f, double df1, double df2) { return {stats::GetDFF(f, df1, df2), stats::GetDFFUpper(f, df1, df2)}; }

double PValue(const Tails& tails, Alternative alternative) {
  switch (alternative) {
    case Alternative::Greater: return tails.upper;
    case Alternative::Less: return tails.lower;
    case Alternative::TwoSided: break;
  }
  return std::min(1.0, 2.0 * std::min(tails.lower, tails.upper));
}

const char* Decision(double p_value, double alpha) { return p_value < alpha ? "Reject H0" : "Fail to reject H0"; }

}  // namespace orvik::analyses
