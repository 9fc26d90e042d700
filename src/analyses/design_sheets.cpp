#include "analyses/design_sheets.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <random>

#include "analyses/analysis_dialog.h"
#include "analyses/factorial_design.h"
#include "shell/host.h"
#include "worksheet/cell_number.h"

namespace orvik::analyses {

namespace {

constexpr long kMostReplicates = 100;
constexpr long kMostCenterPoints = 100;

std::string NumberText(double value) {
  char buffer[32];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value == 0.0 ? 0.0 : value);
  return std::string(buffer, result.ptr);
}

std::string Lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

// Factor names must head columns of their own: non-empty, distinct, and
// none of the design's other headings (compared without regard to case).
bool UsableNames(const std::vector<std::string>& names) {
  std::vector<std::string> seen = {"stdorder", "runorder", "label", "response"};
  for (const auto& name : names) {
    const std::string key = Lower(name);
    if (key.empty() || std::find(seen.begin(), seen.end(), key) != seen.end()) return false;
    seen.push_back(key);
  }
  return true;
}

// A run of a design sheet before it is placed: its cells after StdOrder and
// RunOrder, in column order.
using RunCells = std::vector<std::string>;

std::string SeedLine(const std::optional<std::uint32_t>& seed) {
  return seed ? "Randomized with seed " + std::to_string(*seed) : std::string("Not randomized");
}

// Writes the runs in run order under the headings, with the description in
// a column "Design" right of the last heading.
worksheet::Worksheet PlaceRuns(std::string name, worksheet::SheetDesign design, const std::vector<RunCells>& runs,
                               const std::optional<std::uint32_t>& seed, const std::vector<std::string>& description) {
  worksheet::Worksheet sheet(std::move(name));
  const long n = static_cast<long>(runs.size());
  std::vector<long> order(static_cast<std::size_t>(n));
  for (long i = 0; i < n; ++i) order[static_cast<std::size_t>(i)] = i + 1;
  if (seed) order = RunOrderPermutation(n, *seed);
  for (std::size_t col = 0; col < design.columns.size(); ++col)
    sheet.SetColumnHeader(static_cast<long>(col) + 1, design.columns[col]);
  for (long row = 1; row <= n; ++row) {
    const long standard = order[static_cast<std::size_t>(row - 1)];
    sheet.SetText(row, 1, std::to_string(standard));
    sheet.SetText(row, 2, std::to_string(row));
    const RunCells& cells = runs[static_cast<std::size_t>(standard - 1)];
    for (std::size_t c = 0; c < cells.size(); ++c) sheet.SetText(row, static_cast<long>(c) + 3, cells[c]);
  }
  const long notes = static_cast<long>(design.columns.size()) + 1;
  sheet.SetColumnHeader(notes, "Design");
  for (std::size_t i = 0; i < description.size(); ++i) sheet.SetText(static_cast<long>(i) + 1, notes, description[i]);
  design.Set("Seed", seed ? std::to_string(*seed) : std::string());
  sheet.SetDesign(std::move(design));
  return sheet;
}

}  // namespace

// ---- dialogs ----------------------------------------------------------------

void DesignDialog::AddRandomization() {
  AddCheckBox("Randomize", true).caption = "Randomize runs";
  AddTextBox("Seedtxt").caption = "Seed (empty: a fresh one)";
}

void DesignDialog::AddOkCancel() {
  AddCommandButton("CmdOk", "OK");
  AddCommandButton("CmdCancel", "Cancel");
}

std::optional<long> DesignDialog::Whole(const std::string& box, long low, long high) const {
  const auto value = worksheet::ParseCellNumber(Control(box).text);
  if (!value || *value != static_cast<double>(static_cast<long>(*value))) return std::nullopt;
  if (*value < static_cast<double>(low) || *value > static_cast<double>(high)) return std::nullopt;
  return static_cast<long>(*value);
}

bool DesignDialog::ReadSeed(std::optional<std::uint32_t>& seed) {
  seed.reset();
  if (!Control("Randomize").checked) return true;
  const std::string text = worksheet::TrimBlanks(Control("Seedtxt").text);
  if (text.empty()) {
    // The fresh seed goes into the box, so the dialog's record repeats it.
    seed = static_cast<std::uint32_t>(std::random_device{}());
    MutableControl("Seedtxt").text = std::to_string(*seed);
    return true;
  }
  const auto value = worksheet::ParseCellNumber(text);
  if (!value || *value < 0.0 || *value > 4294967295.0 || *value != static_cast<double>(static_cast<std::uint64_t>(*value)))
    return false;
  seed = static_cast<std::uint32_t>(*value);
  return true;
}

bool DesignDialog::Refuse(shell::Host& host) const {
  host.Refuse(kInvalidNumericalData);
  return false;
}

LevelDesignDialog::LevelDesignDialog(std::string name, std::string caption, int factors)
    : DesignDialog(std::move(name), std::move(caption)), factors_(factors) {
  for (int i = 1; i <= factors; ++i) {
    const std::string n = std::to_string(i);
    AddTextBox("Name" + n + "txt", std::string(1, FactorLetter(i - 1))).caption = "Factor " + n + " name";
    AddTextBox("Levels" + n + "txt", "2").caption = "Number of levels (2 to 20)";
    AddTextBox("LevelNames" + n + "txt").caption = "Level names, separated by commas";
  }
  AddTextBox("Replicatestxt", "1").caption = "Replicates";
  AddRandomization();
  AddOkCancel();
}

bool LevelDesignDialog::OnOk(shell::Host& host) {
  LevelDesignSettings settings;
  std::vector<std::string> names;
  long runs = 1;
  for (int i = 1; i <= factors_; ++i) {
    const std::string n = std::to_string(i);
    const auto count = Whole("Levels" + n + "txt", 2, 20);
    if (!count) return Refuse(host);
    LevelFactor factor{worksheet::TrimBlanks(Control("Name" + n + "txt").text), {}};
    const std::string& typed = Control("LevelNames" + n + "txt").text;
    if (worksheet::TrimBlanks(typed).empty()) {
      for (long level = 1; level <= *count; ++level) factor.levels.push_back(std::to_string(level));
    } else {
      std::size_t start = 0;
      while (true) {
        const auto comma = typed.find(',', start);
        factor.levels.push_back(worksheet::TrimBlanks(std::string_view(typed).substr(start, comma - start)));
        if (comma == std::string::npos) break;
        start = comma + 1;
      }
      auto sorted = factor.levels;
      std::sort(sorted.begin(), sorted.end());
      if (static_cast<long>(factor.levels.size()) != *count || sorted.front().empty() ||
          std::adjacent_find(sorted.begin(), sorted.end()) != sorted.end())
        return Refuse(host);
    }
    runs *= *count;
    names.push_back(factor.name);
    settings.factors.push_back(std::move(factor));
  }
  const auto replicates = Whole("Replicatestxt", 1, kMostReplicates);
  if (!replicates || !UsableNames(names) || !ReadSeed(settings.seed)) return Refuse(host);
  settings.replicates = *replicates;
  result_ = std::move(settings);
  return true;
}

std::unique_ptr<shell::DialogModel> MakeDOEOneFactor() {
  return std::make_unique<LevelDesignDialog>("DOEOneFactor", "One-factor Design", 1);
}

std::unique_ptr<shell::DialogModel> MakeDOETwoFactor() {
  return std::make_unique<LevelDesignDialog>("DOETwoFactor", "Two-factor Design", 2);
}

DOESelection::DOESelection() : DesignDialog("DOESelection", "Factorial Design") {
  AddTextBox("Factorstxt", "2").caption = "Number of factors (2 to 5)";
  AddTextBox("Replicatestxt", "1").caption = "Replicates";
  AddTextBox("CenterPointstxt", "0").caption = "Center points";
  for (int i = 1; i <= 5; ++i) {
    const std::string n = std::to_string(i);
    AddTextBox("Name" + n + "txt", std::string(1, FactorLetter(i - 1))).caption = "Factor " + n + " name";
    AddTextBox("Low" + n + "txt", "-1").caption = "Low";
    AddTextBox("High" + n + "txt", "1").caption = "High";
  }
  AddCheckBox("HalfFraction", false).caption = "Half fraction 2^(k-1)";
  AddLabel("Aliaseslbl", "");
  AddRandomization();
  AddOkCancel();
  UpdateBoxes();
}

void DOESelection::UpdateBoxes() {
  const auto factors = Whole("Factorstxt", 2, 5);
  const int k = factors ? static_cast<int>(*factors) : 5;
  for (int i = 1; i <= 5; ++i)
    for (const char* box : {"Name", "Low", "High"}) MutableControl(box + std::to_string(i) + "txt").enabled = i <= k;
  MutableControl("HalfFraction").enabled = k >= 3;
  std::string aliases;
  if (factors && k >= 3 && Control("HalfFraction").checked) {
    aliases = DefiningRelation(k);
    for (const auto& line : AliasLines(k)) aliases += "; " + line;
  }
  MutableControl("Aliaseslbl").caption = aliases;
}

void DOESelection::OnClick(const std::string& control) {
  if (control == "HalfFraction") UpdateBoxes();
}

void DOESelection::OnFocusLost(const std::string& control) {
  if (control == "Factorstxt") UpdateBoxes();
}

bool DOESelection::OnOk(shell::Host& host) {
  FactorialSettings settings;
  const auto factors = Whole("Factorstxt", 2, 5);
  const auto replicates = Whole("Replicatestxt", 1, kMostReplicates);
  const auto centre = Whole("CenterPointstxt", 0, kMostCenterPoints);
  if (!factors || !replicates || !centre) return Refuse(host);
  settings.factors = static_cast<int>(*factors);
  settings.replicates = *replicates;
  settings.centerPoints = *centre;
  settings.halfFraction = Control("HalfFraction").checked;
  if (settings.halfFraction && settings.factors < 3) return Refuse(host);
  for (int i = 1; i <= settings.factors; ++i) {
    const std::string n = std::to_string(i);
    const auto low = worksheet::ParseCellNumber(Control("Low" + n + "txt").text);
    const auto high = worksheet::ParseCellNumber(Control("High" + n + "txt").text);
    if (!low || !high || *low == *high) return Refuse(host);
    settings.names.push_back(worksheet::TrimBlanks(Control("Name" + n + "txt").text));
    settings.lows.push_back(*low);
    settings.highs.push_back(*high);
  }
  if (!UsableNames(settings.names) || !ReadSeed(settings.seed)) return Refuse(host);
  result_ = std::move(settings);
  return true;
}

std::unique_ptr<shell::DialogModel> MakeDOESelection() { return std::make_unique<DOESelection>(); }

// ---- sheets -----------------------------------------------------------------

worksheet::Worksheet LevelDesignSheet(std::string name, const LevelDesignSettings& s) {
  worksheet::SheetDesign design;
  design.kind = s.factors.size() == 1 ? worksheet::design_kinds::kOneFactor : worksheet::design_kinds::kTwoFactor;
  design.analysis = worksheet::design_kinds::kAnalysisKey;
  design.columns = {"StdOrder", "RunOrder"};
  for (const auto& factor : s.factors) {
    design.columns.push_back(factor.name);
    design.factors.push_back({factor.name, factor.levels, {}, {}});
  }
  design.columns.push_back("Response");
  design.response = "Response";
  design.Set("Replicates", std::to_string(s.replicates));
  // Standard order: replicate after replicate, the first factor's levels
  // changing fastest.
  std::vector<RunCells> runs;
  const std::size_t a = s.factors[0].levels.size();
  const std::size_t b = s.factors.size() > 1 ? s.factors[1].levels.size() : 1;
  for (long r = 0; r < s.replicates; ++r)
    for (std::size_t j = 0; j < b; ++j)
      for (std::size_t i = 0; i < a; ++i) {
        RunCells cells = {s.factors[0].levels[i]};
        if (s.factors.size() > 1) cells.push_back(s.factors[1].levels[j]);
        runs.push_back(std::move(cells));
      }
  std::vector<std::string> description = {
      s.factors.size() == 1 ? "One-factor design" : "Two-factor design",
      "Levels: " + std::to_string(a) + (s.factors.size() > 1 ? " x " + std::to_string(b) : std::string()),
      "Replicates: " + std::to_string(s.replicates), "Runs: " + std::to_string(runs.size()), SeedLine(s.seed)};
  return PlaceRuns(std::move(name), std::move(design), runs, s.seed, description);
}

worksheet::Worksheet FactorialSheet(std::string name, const FactorialSettings& s) {
  worksheet::SheetDesign design;
  design.kind = worksheet::design_kinds::kFactorial;
  design.analysis = worksheet::design_kinds::kAnalysisKey;
  design.columns = {"StdOrder", "RunOrder", "Label"};
  for (int j = 0; j < s.factors; ++j) {
    design.columns.push_back(s.names[j]);
    design.factors.push_back({s.names[j], {}, s.lows[j], s.highs[j]});
  }
  design.columns.push_back("Response");
  design.response = "Response";
  design.Set("Replicates", std::to_string(s.replicates));
  design.Set("CenterPoints", std::to_string(s.centerPoints));
  design.Set("HalfFraction", s.halfFraction ? "1" : "0");
  std::vector<RunCells> runs;
  for (const FactorialRun& run : FactorialRuns(s.factors, s.halfFraction, static_cast<int>(s.replicates),
                                               static_cast<int>(s.centerPoints))) {
    RunCells cells = {run.centre ? "0" : TreatmentLabel(run.highFactors)};
    for (int j = 0; j < s.factors; ++j) {
      const double value = run.centre ? (s.lows[j] + s.highs[j]) / 2.0
                                      : ((run.highFactors >> j) & 1U) ? s.highs[j] : s.lows[j];
      cells.push_back(NumberText(value));
    }
    runs.push_back(std::move(cells));
  }
  const std::string k = std::to_string(s.factors);
  std::vector<std::string> description = {
      s.halfFraction ? "Half fraction 2^(" + k + "-1)" : "Full factorial 2^" + k,
      "Replicates: " + std::to_string(s.replicates), "Center points: " + std::to_string(s.centerPoints),
      "Runs: " + std::to_string(runs.size()), SeedLine(s.seed)};
  if (s.halfFraction) {
    description.push_back("Defining relation: " + DefiningRelation(s.factors));
    description.push_back("Aliases:");
    for (auto& line : AliasLines(s.factors)) description.push_back(std::move(line));
  }
  return PlaceRuns(std::move(name), std::move(design), runs, s.seed, description);
}

// ---- commands ---------------------------------------------------------------

namespace {

template <class Dialog, class Sheet>
void MakeDesign(shell::Host& host, Dialog& dialog, Sheet make_sheet) {
  if (host.RunDialog(dialog) != shell::DialogOutcome::Accepted) return;
  host.ShowDesignSheet(make_sheet("Design " + std::to_string(host.NextDesignNumber()), dialog.Result()));
}

}  // namespace

void OneDesignView(shell::Host& host) {
  LevelDesignDialog dialog("DOEOneFactor", "One-factor Design", 1);
  MakeDesign(host, dialog, LevelDesignSheet);
}

void TwoDesignView(shell::Host& host) {
  LevelDesignDialog dialog("DOETwoFactor", "Two-factor Design", 2);
  MakeDesign(host, dialog, LevelDesignSheet);
}

void FactorDesignView(shell::Host& host) {
  DOESelection dialog;
  MakeDesign(host, dialog, FactorialSheet);
}

}  // namespace orvik::analyses
