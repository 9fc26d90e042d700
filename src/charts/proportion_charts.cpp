// The p (and Laney p') and u control charts: one sample per row, its size
// beside its count, limits that step with the sample size.
#include "charts/proportion_charts.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <vector>

#include "charts/chart_limits.h"
#include "charts/chart_stages.h"
#include "charts/control_form.h"
#include "charts/proportion_limits.h"
#include "shell/analysis_input.h"
#include "stats/decimal_numbers.h"
#include "worksheet/cell_number.h"

namespace orvik::charts {

namespace {

namespace messages = worksheet::messages;

constexpr const char* kImproperU = "Improper data for u control chart";
constexpr const char* kInvalidSize = "Please, input valid numerical data";

bool IsWhole(double x) { return std::isfinite(x) && x == std::floor(x); }

// The samples read from the block: sizes empty when the block is one
// column of counts.
struct BlockColumns {
  std::vector<double> sizes;
  std::vector<double> counts;
};

// What the cells of a p or u chart must hold.
struct CellRules {
  bool wholeSizes = false;       // p: units are counted
  bool countWithinSize = false;  // p: no more nonconforming units than units
};

// Reads the block's one or two columns; in a two-column block the left one
// holds the sizes, however the block was dragged. Every cell must be a
// number, every size positive, every count a whole number not below 0.
// Shows `refusal_text` and returns false otherwise.
bool ReadBlockColumns(shell::Host& host, const char* refusal_text, const CellRules& rules, BlockColumns& out) {
  if (!shell::CollectNumericCells(host, worksheet::CellPolicy::Refuse, refusal_text)) return false;
  const worksheet::DataSelection& selection = host.CurrentSelection();
  const long columns = worksheet::ColumnsToWalk(selection);
  const auto rows = static_cast<std::size_t>(worksheet::RowsToWalk(selection));
  const std::vector<double>& values = selection.values;
  if (rows == 0 || columns < 1 || columns > 2 || values.size() != rows * static_cast<std::size_t>(columns)) {
    host.Refuse(refusal_text);
    return false;
  }
  const auto first = values.begin();
  const auto second = values.begin() + static_cast<std::ptrdiff_t>(rows);
  if (columns == 1) {
    out.sizes.clear();
    out.counts.assign(first, second);
  } else {
    const bool left_first = selection.columnStep > 0;
    out.sizes.assign(left_first ? first : second, left_first ? second : values.end());
    out.counts.assign(left_first ? second : first, left_first ? values.end() : second);
  }
  bool valid = std::all_of(out.counts.begin(), out.counts.end(), [](double x) { return x >= 0 && IsWhole(x); });
  for (std::size_t i = 0; valid && i < out.sizes.size(); ++i) {
    const double n = out.sizes[i];
    valid = n > 0 && std::isfinite(n) && (!rules.wholeSizes || IsWhole(n)) &&
            (!rules.countWithinSize || out.counts[i] <= n);
  }
  if (!valid) host.Refuse(refusal_text);
  return valid;
}

// The p chart's dialog. `floor` is the least constant size it accepts.
class PSubForm : public shell::DialogModel {
 public:
  using Parameters = PChartSettings;

  explicit PSubForm(double floor = 0.0) : shell::DialogModel("PSubForm", "p Control Chart"), floor_(floor) {
    AddOptionButton("SizeColumn", "size", true).caption = "Sample sizes in the left column";
    AddOptionButton("SizeConstant", "size").caption = "One sample size for all";
    AddTextBox("Sizetxt").caption = "Sample size";
    AddOptionButton("LimitStepped", "limits", true).caption = "Limits of each sample's size";
    AddOptionButton("LimitAverage", "limits").caption = "Limits of the average sample size";
    AddCheckBox("Laney").caption = "Laney p' chart (overdispersed data)";
    AddCommandButton("POk", "OK");
    AddCommandButton("PCancle", "Cancel");
    UpdateEnabling();
  }

  const PChartSettings& Result() const { return result_; }

 protected:
  void OnClick(const std::string& /*control*/) override { UpdateEnabling(); }

  bool OnOk(shell::Host& host) override {
    PChartSettings settings;
    settings.constantSize = Control("SizeConstant").checked;
    if (settings.constantSize) {
      // A size counts units: a positive whole number, and no sample holds
      // more nonconforming units than its size.
      const auto n = worksheet::ParseCellNumber(Control("Sizetxt").text);
      if (!n || !IsWhole(*n) || *n <= 0 || *n < floor_) {
        host.Refuse(kInvalidSize);
        return false;
      }
      settings.size = *n;
    }
    settings.averageLimits = Control("LimitAverage").checked;
    settings.laney = Control("Laney").checked;
    result_ = settings;
    return true;
  }
  void OnCancel(shell::Host& host) override { host.Log().AppendSessionLine(CancelLine("p")); }

 private:
  void UpdateEnabling() { MutableControl("Sizetxt").enabled = Control("SizeConstant").checked; }

  double floor_;
  PChartSettings result_;
};

// The limits of one stage's samples; `phase_one`, when given, is the first
// stage's limits, whose centre line (and sigma_z) the stage then takes.
using AttributeLimitsOf =
    std::function<AttributeChartLimits(const AttributeSamples& samples, const AttributeChartLimits* phase_one)>;

// The samples first..first + count - 1.
AttributeSamples StageSamples(const AttributeSamples& samples, std::size_t first, std::size_t count) {
  const auto part = [first, count](const std::vector<double>& v) {
    return std::vector<double>(v.begin() + static_cast<long>(first), v.begin() + static_cast<long>(first + count));
  };
  return {part(samples.sizes), part(samples.counts)};
}

// The limits of every stage laid end to end, the centre line per point
// where the stages' centres differ, and the codes of each stage against
// its own centre, the rules starting afresh at each stage.
AttributeChartLimits StagedLimits(const AttributeSamples& samples, const AttributeLimitsOf& limits_of,
                                  const ChartOptions& options, std::vector<ChartStage>& stages,
                                  std::vector<double>& centres, std::vector<CodeMask>& codes) {
  AttributeChartLimits all;
  std::optional<AttributeChartLimits> first_stage;
  const std::size_t total = samples.counts.size();
  for (std::size_t s = 0; s < stages.size(); ++s) {
    const std::size_t first = stages[s].first;
    const std::size_t count = (s + 1 < stages.size() ? stages[s + 1].first : total) - first;
    AttributeChartLimits stage = limits_of(StageSamples(samples, first, count),
                                           s > 0 && options.historical ? &*first_stage : nullptr);
    const auto masks = StandardizedOutOfControlMasks(stage.ratios, stage.centre, stage.UCL, stage.LCL,
                                                     stage.standardized, options.rules);
    codes.insert(codes.end(), masks.begin(), masks.end());
    centres.insert(centres.end(), count, stage.centre);
    stages[s].limits = stage.At(count - 1);
    const auto append = [](std::vector<double>& to, const std::vector<double>& from) {
      to.insert(to.end(), from.begin(), from.end());
    };
    append(all.ratios, stage.ratios), append(all.UCL, stage.UCL), append(all.LCL, stage.LCL);
    append(all.UpperTwoSigma, stage.UpperTwoSigma), append(all.LowerTwoSigma, stage.LowerTwoSigma);
    append(all.standardized, stage.standardized);
    all.centre = stage.centre;
    all.sigmaZ = stage.sigmaZ;
    if (s == 0) first_stage = std::move(stage);
  }
  return all;
}

// The chart of a p or u chart's numbers: the sizes and counts lead the
// grid, and unless the user's given limits replace them the limits step
// with the sizes (and the stages). Rules G to N then judge each point by
// its standardized value rather than by the drawn sigma lines, which the
// floor at 0 and the cap at 1 may have moved. `sigma_z` receives Laney's
// sigma_z of the last stage.
ControlChart AttributeChart(const std::string& statistic, AttributeSamples samples, const AttributeLimitsOf& limits_of,
                            const shell::GivenLimits& given, const ChartOptions& options, double& sigma_z) {
  std::vector<ChartStage> stages = SplitStages(options.stageLabels);
  std::vector<double> centres;
  std::vector<CodeMask> codes;
  AttributeChartLimits limits = stages.empty() ? limits_of(samples, nullptr)
                                               : StagedLimits(samples, limits_of, options, stages, centres, codes);
  sigma_z = limits.sigmaZ;
  const std::size_t last = limits.ratios.size() - 1;
  ControlChart chart = MakeControlChart(statistic, limits.ratios, limits.At(last));
  chart.rules = options.rules;
  chart.leadingColumns.push_back(
      {"Sample size", shell::GridColumn::Numbers(std::move(samples.sizes), shell::NumberDisplay::Shortest())});
  chart.leadingColumns.push_back(
      {"Nonconformity", shell::GridColumn::Numbers(std::move(samples.counts), shell::NumberDisplay::Shortest())});
  if (ApplyGivenLimits(given, 0, kTenSixesSigma, chart.limits)) {
    for (ChartStage& stage : stages) stage.limits = chart.limits;
    chart.stages = std::move(stages);
    FinishChart(chart);
    return chart;
  }
  if (stages.empty()) {
    chart.codes = StandardizedOutOfControlMasks(chart.values.Values(), limits.centre, limits.UCL, limits.LCL,
                                                limits.standardized, options.rules);
  } else {
    chart.codes = std::move(codes);
    chart.stages = std::move(stages);
  }
  const bool centre_steps = !centres.empty() && std::any_of(centres.begin(), centres.end(),
                                                             [&](double c) { return c != centres.front(); });
  if (limits.Stepped() || centre_steps)
    chart.pointLimits = PointLimits{std::move(limits.UCL), std::move(limits.LCL), std::move(limits.UpperTwoSigma),
                                    std::move(limits.LowerTwoSigma),
                                    centre_steps ? shell::NumberSeries(std::move(centres)) : shell::NumberSeries()};
  return chart;
}

}  // namespace

std::unique_ptr<shell::DialogModel> MakePSubForm() { return std::make_unique<PSubForm>(); }

void PView(shell::Host& host) {
  const std::string name = "p";
  if (!shell::ResolveDataBlock(host)) return;
  if (!shell::RequireAtMostColumns(host, 2, messages::kSelectTwoColumns)) return;
  BlockColumns block;
  if (!ReadBlockColumns(host, messages::kInputValidData, {.wholeSizes = true, .countWithinSize = true}, block))
    return;
  host.Log().AppendSessionLine(StartingLine(name));
  PSubForm dialog(*std::max_element(block.counts.begin(), block.counts.end()));
  const auto settings = shell::AskParameters(host, dialog);
  if (!settings) return;
  // The dialog's choice of where the sizes come from must match the block.
  if (settings->constantSize != block.sizes.empty()) {
    host.Refuse(settings->constantSize ? messages::kSelectOneColumnOnly : messages::kSelectTwoColumns);
    host.Log().AppendSessionLine(CancelLine(name));
    return;
  }
  if (settings->constantSize) block.sizes.assign(block.counts.size(), settings->size);
  RunChartComputation(host, name, [&] {
    AttributeSamples samples{std::move(block.sizes), std::move(block.counts)};
    const AttributeLimitsOf limits_of = [&](const AttributeSamples& stage, const AttributeChartLimits* phase_one) {
      return PChartLimits(stage, {.averageSize = settings->averageLimits, .laney = settings->laney}, phase_one);
    };
    const std::string statistic = settings->laney ? "p'" : "p";
    const ChartOptions options = ChartOptionsOf(host, samples.counts.size());
    double sigma_z = 1.0;
    ControlChart chart =
        AttributeChart(statistic, std::move(samples), limits_of, host.Settings().givenLimits, options, sigma_z);
    if (settings->laney) chart.legendHeading = " [p' Out-of-control Code] ";
    shell::ResultWindow window = OneChartWindow(statistic + " control chart", "mnuP", chart);
    if (settings->laney)
      window.Chart("ChartOne").labels.push_back({"sigma z= " + stats::FormatNumber(stats::Round(sigma_z, 8)), std::nullopt, std::nullopt});
    host.ShowResultWindow(std::move(window));
  });
  host.Log().AppendSessionLine(CompletedLine(name));
}

void UView(shell::Host& host) {
  const std::string name = "u";
  if (!shell::ResolveDataBlock(host)) return;
  if (!shell::RequireColumnSpan(host, 2, messages::kSelectTwoColumns)) return;
  BlockColumns block;
  if (!ReadBlockColumns(host, kImproperU, {}, block)) return;
  if (block.sizes.empty()) {
    host.Refuse(kImproperU);
    return;
  }
  host.Log().AppendSessionLine(StartingLine(name));
  RunChartComputation(host, name, [&] {
    AttributeSamples samples{std::move(block.sizes), std::move(block.counts)};
    const AttributeLimitsOf limits_of = [](const AttributeSamples& stage, const AttributeChartLimits* phase_one) {
      return UChartLimits(stage, phase_one);
    };
    const ChartOptions options = ChartOptionsOf(host, samples.counts.size());
    double sigma_z = 1.0;
    ControlChart chart =
        AttributeChart("u", std::move(samples), limits_of, host.Settings().givenLimits, options, sigma_z);
    host.ShowResultWindow(OneChartWindow("u control chart", "mnuU", chart));
  });
  host.Log().AppendSessionLine(CompletedLine(name));
}

}  // namespace orvik::charts
