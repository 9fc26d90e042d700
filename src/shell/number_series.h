#pragma once

#include <cstddef>
#include <initializer_list>
#include <memory>
#include <vector>

namespace orvik::shell {

// A run of numbers that a chart series and the grid columns showing the
// same values hold together: copies share one buffer, so a control chart of
// a million points keeps its values once. Reading looks like a vector;
// writing through Mutable() first takes a private copy when the buffer is
// shared, so a change never reaches another holder.
class NumberSeries {
 public:
  NumberSeries() = default;
  NumberSeries(std::vector<double> values)  // NOLINT: converts implicitly, as a vector would be assigned
      : values_(std::make_shared<std::vector<double>>(std::move(values))) {}
  NumberSeries(std::initializer_list<double> values) : NumberSeries(std::vector<double>(values)) {}

  std::size_t size() const { return values_ ? values_->size() : 0; }
  bool empty() const { return size() == 0; }
  double operator[](std::size_t i) const { return (*values_)[i]; }
  double front() const { return values_->front(); }
  double back() const { return values_->back(); }
  const double* begin() const { return values_ ? values_->data() : nullptr; }
  const double* end() const { return values_ ? values_->data() + values_->size() : nullptr; }
  const double* data() const { return begin(); }
  const std::vector<double>& Values() const;

  // The values for writing; copies them first when another holder shares them.
  std::vector<double>& Mutable();
  void push_back(double value) { Mutable().push_back(value); }

  friend bool operator==(const NumberSeries& a, const NumberSeries& b) { return a.Values() == b.Values(); }
  friend bool operator==(const NumberSeries& a, const std::vector<double>& b) { return a.Values() == b; }

 private:
  std::shared_ptr<std::vector<double>> values_;
};

}  // namespace orvik::shell
