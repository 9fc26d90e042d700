#include "worksheet/sheet_design.h"

#include <algorithm>
#include <charconv>
#include <cctype>

#include "worksheet/cell_number.h"
#include "worksheet/worksheet.h"

namespace orvik::worksheet {

namespace {

std::string Escaped(std::string_view text) {
  std::string out;
  for (const char c : text) {
    if (c == '\\') out += "\\\\";
    else if (c == '\t') out += "\\t";
    else if (c == '\n') out += "\\n";
    else if (c == '\r') out += "\\r";
    else out += c;
  }
  return out;
}

// Splits a line at its tabs and undoes Escaped in every field.
std::vector<std::string> Fields(std::string_view line) {
  std::vector<std::string> fields(1);
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (c == '\t') {
      fields.emplace_back();
    } else if (c == '\\' && i + 1 < line.size()) {
      const char next = line[++i];
      fields.back() += next == 't' ? '\t' : next == 'n' ? '\n' : next == 'r' ? '\r' : next;
    } else {
      fields.back() += c;
    }
  }
  return fields;
}

std::string NumberText(double value) {
  char buffer[32];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, result.ptr);
}

bool SameHeading(std::string_view a, std::string_view b) {
  return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
           return std::tolower(static_cast<unsigned char>(x)) == std::tolower(static_cast<unsigned char>(y));
         });
}

// The headings of the sheet's columns: its header names when it has any,
// else the texts of row 1. `in_row_one` tells which.
std::vector<std::string> Headings(const Worksheet& sheet, bool& in_row_one) {
  std::vector<std::string> names;
  bool any_name = false;
  for (long col = 1; col <= sheet.DataColCnt(); ++col) {
    names.push_back(sheet.ColumnHeaderName(col));
    any_name = any_name || !names.back().empty();
  }
  in_row_one = !any_name;
  if (in_row_one)
    for (long col = 1; col <= sheet.DataColCnt(); ++col) names[col - 1] = std::string(sheet.Text(1, col));
  return names;
}

}  // namespace

std::string SheetDesign::Setting(std::string_view key) const {
  for (const auto& [name, value] : settings)
    if (name == key) return value;
  return {};
}

void SheetDesign::Set(std::string key, std::string value) {
  for (auto& [name, old] : settings)
    if (name == key) {
      old = std::move(value);
      return;
    }
  settings.emplace_back(std::move(key), std::move(value));
}

std::string DesignText(const SheetDesign& design) {
  std::string text = "kind\t" + Escaped(design.kind) + "\n";
  if (!design.analysis.empty()) text += "analysis\t" + Escaped(design.analysis) + "\n";
  for (const auto& column : design.columns) text += "column\t" + Escaped(column) + "\n";
  for (const auto& factor : design.factors) {
    text += "factor\t" + Escaped(factor.name) + "\t" + (factor.low ? NumberText(*factor.low) : "") + "\t" +
            (factor.high ? NumberText(*factor.high) : "");
    for (const auto& level : factor.levels) text += "\t" + Escaped(level);
    text += "\n";
  }
  text += "response\t" + Escaped(design.response) + "\n";
  for (const auto& [key, value] : design.settings) text += "setting\t" + Escaped(key) + "\t" + Escaped(value) + "\n";
  return text;
}

std::optional<SheetDesign> ParseDesignText(std::string_view text) {
  SheetDesign design;
  bool has_kind = false;
  while (!text.empty()) {
    const auto end = text.find('\n');
    if (end == std::string_view::npos) return std::nullopt;  // every line ends with a break
    const auto fields = Fields(text.substr(0, end));
    text.remove_prefix(end + 1);
    const std::string& tag = fields[0];
    if (tag == "kind" && fields.size() == 2) {
      design.kind = fields[1];
      has_kind = true;
    } else if (tag == "analysis" && fields.size() == 2) {
      design.analysis = fields[1];
    } else if (tag == "column" && fields.size() == 2) {
      design.columns.push_back(fields[1]);
    } else if (tag == "factor" && fields.size() >= 4) {
      DesignFactor factor{fields[1], {fields.begin() + 4, fields.end()}, {}, {}};
      if (!fields[2].empty() && !(factor.low = ParseCellNumber(fields[2]))) return std::nullopt;
      if (!fields[3].empty() && !(factor.high = ParseCellNumber(fields[3]))) return std::nullopt;
      design.factors.push_back(std::move(factor));
    } else if (tag == "response" && fields.size() == 2) {
      design.response = fields[1];
    } else if (tag == "setting" && fields.size() == 3) {
      design.settings.emplace_back(fields[1], fields[2]);
    } else {
      return std::nullopt;
    }
  }
  if (!has_kind) return std::nullopt;
  return design;
}

long DesignColumns::Of(const SheetDesign& design, std::string_view name) const {
  for (std::size_t i = 0; i < design.columns.size() && i < columns.size(); ++i)
    if (SameHeading(design.columns[i], name)) return columns[i];
  return 0;
}

std::optional<DesignColumns> FindDesignColumns(const Worksheet& sheet, const SheetDesign& design) {
  bool in_row_one = false;
  const auto headings = Headings(sheet, in_row_one);
  DesignColumns found;
  found.firstRow = in_row_one ? 2 : 1;
  for (const auto& wanted : design.columns) {
    const auto at = std::find_if(headings.begin(), headings.end(),
                                 [&](const std::string& heading) { return SameHeading(heading, wanted); });
    if (at == headings.end()) return std::nullopt;
    const long col = static_cast<long>(at - headings.begin()) + 1;
    found.columns.push_back(col);
    found.lastRow = std::max(found.lastRow, sheet.LastFilledRow(col));
  }
  return found;
}

std::optional<SheetDesign> RecognizeDesign(const Worksheet& sheet) {
  bool in_row_one = false;
  const auto headings = Headings(sheet, in_row_one);
  const auto find = [&](std::string_view name) -> long {
    for (std::size_t i = 0; i < headings.size(); ++i)
      if (SameHeading(headings[i], name)) return static_cast<long>(i);
    return -1;
  };
  const long std_order = find("StdOrder"), run_order = find("RunOrder"), label = find("Label");
  const long response = find("Response");
  if (std_order < 0 || run_order < 0 || response < 0) return std::nullopt;
  const long first_factor = std::max({std_order, run_order, label}) + 1;
  if (response <= first_factor) return std::nullopt;
  SheetDesign design;
  design.analysis = design_kinds::kAnalysisKey;
  design.columns = {headings[std_order], headings[run_order]};
  if (label >= 0) design.columns.push_back(headings[label]);
  for (long i = first_factor; i < response; ++i) {
    if (headings[i].empty()) return std::nullopt;
    design.columns.push_back(headings[i]);
    design.factors.push_back({headings[i], {}, {}, {}});
  }
  design.columns.push_back(headings[response]);
  design.response = headings[response];
  const std::size_t count = design.factors.size();
  if (label >= 0) design.kind = design_kinds::kFactorial;
  else if (count == 1) design.kind = design_kinds::kOneFactor;
  else if (count == 2) design.kind = design_kinds::kTwoFactor;
  else return std::nullopt;
  return design;
}

}  // namespace orvik::worksheet
