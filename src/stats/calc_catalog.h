#pragma once

#include <functional>
#include <span>
#include <string_view>
#include <vector>

namespace orvik::stats {

// One function of the statistical library as the distribution calculator
// (orvik-cli calc) calls it: its name, the names of its arguments, and the
// call. A call with arguments outside the function's domain or a table's
// bounds throws std::invalid_argument or std::out_of_range with a clear text.
struct CalcFunction {
  std::string_view name;
  std::vector<std::string_view> arguments;
  std::function<double(std::span<const double>)> call;
  std::string_view summary;
};

// Every function the calculator offers, in the order its help lists them.
const std::vector<CalcFunction>& CalcCatalog();
const CalcFunction* FindCalcFunction(std::string_view name);

}  // namespace orvik::stats
