#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvik::worksheet {

class Worksheet;

// One factor of a design sheet: the heading of its column, and how its
// column is coded. A factor with level names (one- and two-factor designs,
// the parts and appraisers of a study) holds them in their standard order;
// a two-level factor holds its low and high settings, coded -1 and +1.
struct DesignFactor {
  std::string name;
  std::vector<std::string> levels;
  std::optional<double> low;
  std::optional<double> high;
  friend bool operator==(const DesignFactor&, const DesignFactor&) = default;
};

// What makes a worksheet a design sheet (`DOEDoc`): the kind of design, the
// headings of its columns in order, which of them are factors and which is
// the response, and the settings the design was made with (replicates,
// centre points, seed, ...), kept so that its analysis asks nothing more.
// Sheets of other kinds (a study sheet) use the same record with their own
// kind, columns, settings and analysis.
struct SheetDesign {
  std::string kind;
  // The tool key of the command that analyses the sheet ("DOEAnalysis"),
  // which the sheet's own menu offers.
  std::string analysis;
  std::vector<std::string> columns;
  std::vector<DesignFactor> factors;
  std::string response;
  std::vector<std::pair<std::string, std::string>> settings;

  // The value of setting `key`, empty when it is not kept.
  std::string Setting(std::string_view key) const;
  // Sets or replaces setting `key`.
  void Set(std::string key, std::string value);
  friend bool operator==(const SheetDesign&, const SheetDesign&) = default;
};

// The kinds of design the design dialogs make.
namespace design_kinds {
inline constexpr const char* kOneFactor = "OneFactor";
inline constexpr const char* kTwoFactor = "TwoFactor";
inline constexpr const char* kFactorial = "Factorial";
// The command that analyses them.
inline constexpr const char* kAnalysisKey = "DOEAnalysis";
}  // namespace design_kinds

// The design as one text (a line per item, fields separated by tabs, with
// tabs, line breaks and backslashes escaped), for project files.
std::string DesignText(const SheetDesign& design);
// Reads DesignText back; nullopt for a text it did not write.
std::optional<SheetDesign> ParseDesignText(std::string_view text);

// Where the columns of a design lie on a sheet: the row of the first run
// and the sheet column of every heading of the design (0 when missing).
struct DesignColumns {
  long firstRow = 1;
  long lastRow = 0;  // the last row holding any of the design's cells
  std::vector<long> columns;  // parallel to SheetDesign::columns
  // The sheet column of heading `name`, or 0.
  long Of(const SheetDesign& design, std::string_view name) const;
};

// Finds the design's headings on `sheet`: in the column header names (the
// sheet as the design dialogs make it), or else in the cells of row 1 (the
// sheet exported with its header row and read back as plain cells), the
// runs then starting in row 2. Headings match without regard to case.
// nullopt when some heading of the design is not found.
std::optional<DesignColumns> FindDesignColumns(const Worksheet& sheet, const SheetDesign& design);

// The design of a sheet that carries none, recognised from its headings
// (column header names, else row 1): "StdOrder", "RunOrder", then "Label"
// for a two-level factorial design, the factor columns, and "Response".
// One factor column without a label makes a one-factor design, two a
// two-factor design. nullopt when the headings do not form a design.
std::optional<SheetDesign> RecognizeDesign(const Worksheet& sheet);

}  // namespace orvik::worksheet
