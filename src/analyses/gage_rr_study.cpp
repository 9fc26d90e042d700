#include "analyses/gage_rr_study.h"

#include <algorithm>
#include <charconv>

#include "analyses/factorial_design.h"
#include "worksheet/cell_number.h"

namespace orvik::analyses {

namespace {

const std::vector<std::string> kStudyColumns = {"RunOrder", "Part", "Appraiser", "Trial", "Measurement"};

// The shortest text that reads back as the same double.
std::string RoundTripText(double value) {
  char buffer[32];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, result.ptr);
}

std::vector<std::string> Numbered(long count) {
  std::vector<std::string> levels;
  for (long i = 1; i <= count; ++i) levels.push_back(std::to_string(i));
  return levels;
}

}  // namespace

worksheet::Worksheet GageStudySheet(std::string name, const GageRRSettings& s) {
  worksheet::SheetDesign design;
  design.kind = kGageStudyKind;
  design.columns = kStudyColumns;
  design.factors = {{"Part", Numbered(s.parts), {}, {}},
                    {"Appraiser", s.appraiserNames, {}, {}},
                    {"Trial", Numbered(s.trials), {}, {}}};
  design.response = "Measurement";
  design.analysis = "GageRRAnalysis";
  design.Set("Tolerance", s.tolerance ? RoundTripText(*s.tolerance) : std::string());
  design.Set("Multiplier", RoundTripText(s.multiplier));
  design.Set("Method", s.method == GageMethod::XbarR ? "XbarR" : "ANOVA");
  design.Set("Seed", s.seed ? std::to_string(*s.seed) : std::string());

  // Runs in standard order (parts fastest, then appraisers, then trials);
  // a random permutation of them, sorted back by trial and appraiser
  // without disturbing the rest, puts each round's parts in random order.
  const long rounds = s.appraisers * s.trials;
  const long n = rounds * s.parts;
  std::vector<long> order(static_cast<std::size_t>(n));
  for (long i = 0; i < n; ++i) order[static_cast<std::size_t>(i)] = i;
  if (s.seed) {
    order = RunOrderPermutation(n, *s.seed);
    for (long& run : order) --run;
    std::stable_sort(order.begin(), order.end(), [&](long a, long b) { return a / s.parts < b / s.parts; });
  }
  worksheet::Worksheet sheet(std::move(name));
  for (std::size_t col = 0; col < kStudyColumns.size(); ++col)
    sheet.SetColumnHeader(static_cast<long>(col) + 1, kStudyColumns[col]);
  for (long row = 1; row <= n; ++row) {
    const long run = order[static_cast<std::size_t>(row - 1)];
    const long part = run % s.parts, round = run / s.parts;
    sheet.SetText(row, 1, std::to_string(row));
    sheet.SetText(row, 2, std::to_string(part + 1));
    sheet.SetText(row, 3, s.appraiserNames[static_cast<std::size_t>(round % s.appraisers)]);
    sheet.SetText(row, 4, std::to_string(round / s.appraisers + 1));
  }
  // The study described right of Measurement, as the design sheets
  // describe their designs.
  std::string names;
  for (const auto& appraiser : s.appraiserNames) names += (names.empty() ? "" : ", ") + appraiser;
  const std::vector<std::string> description = {
      "Gage R&R study",
      "Parts: " + std::to_string(s.parts),
      "Appraisers: " + std::to_string(s.appraisers) + " (" + names + ")",
      "Trials: " + std::to_string(s.trials),
      "Runs: " + std::to_string(n),
      s.seed ? "Randomized with seed " + std::to_string(*s.seed) : std::string("Not randomized"),
      "Process tolerance: " + (s.tolerance ? RoundTripText(*s.tolerance) : std::string("none")),
      "Study variation: " + RoundTripText(s.multiplier) + " * SD",
      s.method == GageMethod::XbarR ? "Method: Xbar and R" : "Method: ANOVA"};
  const long notes = static_cast<long>(kStudyColumns.size()) + 1;
  sheet.SetColumnHeader(notes, "Design");
  for (std::size_t i = 0; i < description.size(); ++i) sheet.SetText(static_cast<long>(i) + 1, notes, description[i]);
  sheet.SetDesign(std::move(design));
  return sheet;
}

GageRRSettings StudySettings(const worksheet::SheetDesign& design) {
  GageRRSettings settings;
  if (const auto tolerance = worksheet::ParseCellNumber(design.Setting("Tolerance")); tolerance && *tolerance > 0.0)
    settings.tolerance = tolerance;
  if (const auto multiplier = worksheet::ParseCellNumber(design.Setting("Multiplier")); multiplier && *multiplier > 0.0)
    settings.multiplier = *multiplier;
  settings.method = design.Setting("Method") == "XbarR" ? GageMethod::XbarR : GageMethod::Anova;
  return settings;
}

void GageRRStudyView(shell::Host& host) {
  GageRRFactor dialog;
  if (host.RunDialog(dialog) != shell::DialogOutcome::Accepted) return;
  host.ShowDesignSheet(GageStudySheet("Gage Study " + std::to_string(host.NextDesignNumber()), dialog.Result()));
}

}  // namespace orvik::analyses
