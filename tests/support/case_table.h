#pragma once

// Case tables kept as data files under tests/: one case a line, fields
// separated by blanks or tabs, a field starting with '#' ending the line.
// A field in double quotes may hold blanks, '#' and the escapes \t \r \n
// \" \\; "" is the empty text. Paths are relative to tests/.
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace orvik::testing_support {

struct CaseRow {
  int line = 0;
  std::vector<std::string> fields;
  const std::string& operator[](std::size_t i) const { return fields.at(i); }
  std::string Where() const { return "line " + std::to_string(line); }
  double Number(std::size_t i) const {  // also inf, nan, hex and subnormal numbers
    char* end = nullptr;
    const double value = std::strtod(fields.at(i).c_str(), &end);
    if (*end || fields.at(i).empty()) throw std::invalid_argument(Where() + ": not a number: " + fields.at(i));
    return value;
  }
};

inline std::vector<CaseRow> ReadCases(const std::string& path) {
  std::ifstream in(std::string(ORVIK_SOURCE_DIR) + "/tests/" + path);
  if (!in) throw std::runtime_error("no case table tests/" + path);
  std::vector<CaseRow> rows;
  std::string line;
  for (int number = 1; std::getline(in, line); ++number) {
    CaseRow row{number, {}};
    for (std::size_t i = 0; i < line.size();) {
      if (line[i] == ' ' || line[i] == '\t' || line[i] == '\r') { ++i; continue; }
      if (line[i] == '#') break;
      std::string field;
      if (line[i] != '"') {
        while (i < line.size() && line[i] != ' ' && line[i] != '\t' && line[i] != '\r') field += line[i++];
      } else {
        for (++i; i < line.size() && line[i] != '"'; ++i) {
          if (line[i] == '\\' && i + 1 < line.size()) {
            const char c = line[++i];
            field += c == 't' ? '\t' : c == 'r' ? '\r' : c == 'n' ? '\n' : c;
          } else {
            field += line[i];
          }
        }
        ++i;
      }
      row.fields.push_back(field);
    }
    if (!row.fields.empty()) rows.push_back(std::move(row));
  }
  if (rows.empty()) throw std::runtime_error("no cases in tests/" + path);
  return rows;
}

}  // namespace orvik::testing_support
