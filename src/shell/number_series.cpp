#include "shell/number_series.h"

namespace orvik::shell {

const std::vector<double>& NumberSeries::Values() const {
  static const std::vector<double> kNone;
  return values_ ? *values_ : kNone;
}

std::vector<double>& NumberSeries::Mutable() {
  if (!values_) values_ = std::make_shared<std::vector<double>>();
  else if (values_.use_count() > 1) values_ = std::make_shared<std::vector<double>>(*values_);
  return *values_;
}

}  // namespace orvik::shell
