#pragma once

#include <charconv>
#include <string>

namespace orvik::formats {

// The shortest text that reads back to exactly `value` ("9.8", not
// "9.800000000000001"). Imported numbers become cell texts this way, so no
// digit of a stored number is lost and none is invented.
inline std::string ShortestText(double value) {
  char text[32];
  const auto result = std::to_chars(text, text + sizeof text, value);
  return std::string(text, result.ptr);
}

}  // namespace orvik::formats
