#include "stats/calc_catalog.h"

#include "stats/decimal_numbers.h"

namespace orvik::stats {

const std::vector<CalcFunction>& CalcCatalog() {
  static const std::vector<CalcFunction> catalog = {
      {"Round", {"x", "decimals"}, [](std::span<const double> a) { return Round(a[0], static_cast<int>(a[1])); },
       "decimal rounding with ties to the even digit"},
  };
  return catalog;
}

const CalcFunction* FindCalcFunction(std::string_view name) {
  for (const auto& function : CalcCatalog())
    if (function.name == name) return &function;
  return nullptr;
}

}  // namespace orvik::stats
