#pragma once

// The accuracy sample: 1001 readings in one column, 10000000.2 and then 500
// pairs 10000000.1, 10000000.3, so that the mean is 10000000.2 and the
// standard deviation 0.1. The values are large against their spread: summed
// plainly in this order they drift by about 1e-4, which a report of 15
// significant digits shows.
#include <string>
#include <vector>

namespace orvik::testing_support {

inline std::vector<std::string> AccuracySampleTexts() {
  std::vector<std::string> texts{"10000000.2"};
  for (int pair = 0; pair < 500; ++pair) {
    texts.push_back("10000000.1");
    texts.push_back("10000000.3");
  }
  return texts;
}

inline std::vector<double> AccuracySampleValues() {
  std::vector<double> values;
  for (const auto& text : AccuracySampleTexts()) values.push_back(std::stod(text));
  return values;
}

}  // namespace orvik::testing_support
