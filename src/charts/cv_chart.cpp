// The coefficient-of-variation control chart (Kang, Lee, Seong and Hawkins,
// Journal of Quality Technology 39(2), 2007): for processes whose spread
// grows with their mean, each subgroup's s / x-bar against probability
// limits of the sample CV of normal subgroups.
#include "charts/cv_chart.h"

#include <cmath>
#include <string>

#include "charts/chart_limits.h"
#include "charts/chart_stages.h"
#include "charts/control_charts.h"
#include "charts/control_form.h"
#include "stats/coefficient_of_variation.h"
#include "stats/compensated_sum.h"
#include "stats/decimal_numbers.h"
#include "worksheet/cell_number.h"

namespace orvik::charts {

namespace {

constexpr const char* kChartName = "CV";
constexpr long kLeastSize = 2;
constexpr long kMostSize = 25;
// The quantiles of the 2-sigma lines: Phi(-2) and Phi(2).
constexpr double kLowerTwoSigmaLevel = 0.02275;
constexpr double kUpperTwoSigmaLevel = 0.97725;
// CVs of a few parts in ten thousand are common, so the chart keeps 12
// places (8 significant digits there) where the range charts keep 8.
constexpr int kDecimals = 12;
// Given limits get their 2-sigma lines at two thirds of each distance, as
// the range charts draw them.
constexpr SigmaRule kGivenSigma{0.6666666666, kDecimals};

struct SubgroupMoments {
  double mean = 0.0;
  double sd = 0.0;
};

// Two passes over one subgroup, both sums compensated.
SubgroupMoments Moments(const double* row, std::size_t n) {
  stats::CompensatedSum sum;
  for (std::size_t j = 0; j < n; ++j) sum.Add(row[j]);
  const double mean = sum.Value() / static_cast<double>(n);
  stats::CompensatedSum squares;
  for (std::size_t j = 0; j < n; ++j) squares.Add((row[j] - mean) * (row[j] - mean));
  return {mean, std::sqrt(squares.Value() / static_cast<double>(n - 1))};
}

// The subgroups of the block: every cell numeric, 2 to 25 values a
// subgroup, and every subgroup mean positive, since a CV is charted only
// against a positive mean.
bool ReadCVSubgroups(shell::Host& host, Subgroups& out) {
  auto groups = ReadSubgroups(*host.ActiveWorksheet(), host.CurrentSelection());
  bool valid = groups && groups->size >= kLeastSize && groups->size <= kMostSize && groups->Count() > 0;
  for (long g = 0; valid && g < groups->Count(); ++g)
    valid = Moments(groups->values.data() + g * groups->size, static_cast<std::size_t>(groups->size)).mean > 0.0;
  if (!valid) {
    host.Refuse(worksheet::messages::kInputValidData);
    return false;
  }
  out = std::move(*groups);
  return true;
}

class CVForm : public shell::DialogModel {
 public:
  using Parameters = CVChartSettings;

  CVForm() : shell::DialogModel("CVForm", "CV Control Chart") {
    AddTextBox("CVtxt").caption = "In-control CV (empty: estimated from the data)";
    AddTextBox("Alphatxt", "0.0027").caption = "False-alarm probability";
    AddCommandButton("CmdOk", "OK");
    AddCommandButton("CmdCancel", "Cancel");
  }

  const CVChartSettings& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override {
    CVChartSettings settings;
    bool valid = true;
    const std::string& cv_text = Control("CVtxt").text;
    if (cv_text.find_first_not_of(" \t") != std::string::npos) {
      settings.inControlCV = worksheet::ParseCellNumber(cv_text);
      valid = settings.inControlCV && *settings.inControlCV > 0.0;
    }
    const auto alpha = worksheet::ParseCellNumber(Control("Alphatxt").text);
    valid = valid && alpha && *alpha > 0.0 && *alpha < 1.0;
    if (!valid) {
      host.Refuse("Please, input valid numerical data");
      return false;
    }
    settings.alpha = *alpha;
    result_ = settings;
    return true;
  }
  void OnCancel(shell::Host& host) override { host.Log().AppendSessionLine(CancelLine(kChartName)); }

 private:
  CVChartSettings result_;
};

}  // namespace

std::vector<double> SubgroupCVs(const Subgroups& groups) {
  std::vector<double> cvs;
  cvs.reserve(static_cast<std::size_t>(groups.Count()));
  for (long g = 0; g < groups.Count(); ++g) {
    const SubgroupMoments m = Moments(groups.values.data() + g * groups.size, static_cast<std::size_t>(groups.size));
    cvs.push_back(stats::Round(m.sd / m.mean, kDecimals));
  }
  return cvs;
}

double RootMeanSquareCV(const std::vector<double>& cvs) {
  stats::CompensatedSum squares;
  for (const double cv : cvs) squares.Add(cv * cv);
  return std::sqrt(squares.Value() / static_cast<double>(cvs.size()));
}

ControlLimits CVLimits(long n, double cv, double alpha) {
  if (!(cv > 0.0) || !std::isfinite(cv)) throw ChartComputationError("the in-control CV must be positive");
  const auto quantile = [&](double p) {
    const double q = stats::CVQuantile(p, static_cast<double>(n), cv);
    if (std::isnan(q)) throw ChartComputationError("no quantile of the sample CV");
    return stats::Round(q, kDecimals);
  };
  ControlLimits limits;
  limits.CL = stats::Round(cv, kDecimals);
  limits.UCL = quantile(1.0 - 0.5 * alpha);
  limits.LCL = quantile(0.5 * alpha);
  limits.UpperTwoSigma = quantile(kUpperTwoSigmaLevel);
  limits.LowerTwoSigma = quantile(kLowerTwoSigmaLevel);
  return limits;
}

std::unique_ptr<shell::DialogModel> MakeCVForm() { return std::make_unique<CVForm>(); }

void CVView(shell::Host& host) {
  const std::string name = kChartName;
  Subgroups groups;
  if (!PrepareChartInput(host, name, false, [&] { return ReadCVSubgroups(host, groups); })) return;
  CVForm dialog;
  const auto settings = shell::AskParameters(host, dialog);
  if (!settings) return;
  RunChartComputation(host, name, [&] {
    const std::vector<double> cvs = SubgroupCVs(groups);
    const StageLimits limits_of = [&](std::size_t first, std::size_t count) {
      const double in_control = settings->inControlCV.value_or(
          RootMeanSquareCV({cvs.begin() + static_cast<long>(first), cvs.begin() + static_cast<long>(first + count)}));
      ControlLimits limits = CVLimits(groups.size, in_control, settings->alpha);
      ApplyGivenLimits(host.Settings().givenLimits, 0, kGivenSigma, limits);
      return limits;
    };
    ControlChart chart = RuledChart("CV", cvs, limits_of, ChartOptionsOf(host, cvs.size()));
    chart.valueDecimals = kDecimals;
    chart.labelDecimals = kDecimals;
    host.ShowResultWindow(OneChartWindow("CV control chart", "mnuCV", chart));
  });
  host.Log().AppendSessionLine(CompletedLine(name));
}

}  // namespace orvik::charts
