#pragma once

#include <string>

namespace orvik::stats {

// Decimal rounding of `x` to `decimals` places (negative: to tens, hundreds,
// ...) with ties to the even digit. The tie is judged on the shortest decimal
// text that reads back to x, which is what the user typed or saw, not on the
// binary value: Round(2.675, 2) = 2.68 although the double nearest 2.675 lies
// slightly below it; Round(2.5, 0) = 2, Round(0.125, 2) = 0.12,
// Round(-1.5, 0) = -2. NaN and infinities come back unchanged.
double Round(double x, int decimals);

// The number of decimal places of the shortest decimal text of `x`:
// 2 for 3.25, 0 for 1200, 9 for 1.5E-09; 0 for zero and non-finite values.
int DecimalPlaces(double x);

// The text a result grid shows for a number: the shortest text that reads
// back to the value, at most 15 significant digits, no trailing zeros
// ("2.5", "10", "1.666667", "-0.25"). Plain notation for magnitudes from
// 1E-07 up to below 1E+15, so that values rounded to six or seven places
// read as decimals ("0.000001"); otherwise a spreadsheet's scientific form
// with a signed two-digit exponent ("1.5E-08", "2E+20"). Negative zero shows as
// "0"; NaN as "NaN"; infinities as "Infinity" and "-Infinity".
std::string FormatNumber(double x);

// FormatNumber(x) appended to `text`.
void AppendNumber(double x, std::string& text);
// FormatNumber(Round(x, decimals)) appended to `text`, from one conversion
// of x to decimal digits: result grids show millions of rounded values.
void AppendRoundedNumber(double x, int decimals, std::string& text);

// x - reference computed on the shortest decimal texts that read back to
// them, which are the numbers the user typed whenever those had at most 15
// significant digits, and rounded once to double. Data such as
// 1000000000000.4 and 1000000000000.3 lie 1.2e-4 apart in double, so their
// plain difference is off by 1e-4 relative; the decimal difference is 0.1
// exactly rounded. When the two texts cannot be aligned within 38 digits
// (magnitudes far apart), the plain difference is returned, which is then
// accurate. Non-finite arguments give the plain difference.
double DecimalDifference(double x, double reference);

}  // namespace orvik::stats
