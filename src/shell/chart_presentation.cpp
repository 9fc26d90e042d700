#include "shell/chart_presentation.h"

#include <charconv>
#include <cstdio>

namespace orvik::shell {

namespace {

bool IsNumber(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  if (text.empty()) return false;
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  return error == std::errc() && end == text.data() + text.size();
}

}  // namespace

std::string RelabelLimit(const std::string& label, double value, int decimals) {
  if (decimals < 0) return label;
  const std::size_t equals = label.rfind('=');
  std::size_t start = equals != std::string::npos ? equals + 1 : label.rfind(' ');
  start = start == std::string::npos ? 0 : start;
  if (equals == std::string::npos && start > 0) ++start;  // after the space
  if (!IsNumber(std::string_view(label).substr(start))) return label;
  char number[64];
  std::snprintf(number, sizeof number, "%.*f", decimals > 15 ? 15 : decimals, value);
  // The space after '=' stays as the analysis wrote it.
  const std::string head = label.substr(0, start);
  const bool spaced = equals != std::string::npos && start < label.size() && label[start] == ' ';
  return head + (spaced ? " " : "") + number;
}

}  // namespace orvik::shell
