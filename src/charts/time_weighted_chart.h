#pragma once

// What the CUSUM, EWMA and moving-average charts share: their input (one
// column of individual values or a block of subgroups in rows), the process
// level and sigma their dialogs confirm or the data estimate, the charts
// whose limits change from point to point, and the range chart that the
// EWMA and MA windows add for subgroups.

#include <optional>
#include <string>
#include <vector>

#include "charts/control_form.h"
#include "shell/dialog_model.h"
#include "shell/host.h"

namespace orvik::charts {

inline constexpr const char* kInvalidNumber = "Please, input valid numerical data";

// The points of a time-weighted chart and what sigma is estimated from.
struct TimeWeightedData {
  long n = 1;                       // subgroup size; 1 for one column of individual values
  std::vector<double> points;       // the values, or the subgroup means rounded to 8 places
  std::vector<double> ranges;       // the subgroup ranges (n >= 2)
  double mean = 0.0;                // the mean of the points
  double estimatedSigma = 0.0;      // MR-bar / 1.128, or s-bar / c4(n)
  std::string PointHeading() const { return n == 1 ? "x" : "xbar"; }
};

// Resolves the block and reads it: one column gives individual values,
// more columns give one subgroup per row. An empty or non-numeric cell is
// refused with `improper_text`, fewer than two points with "All data are
// not enough to analysis". Returns false after a refusal.
bool ReadTimeWeightedData(shell::Host& host, const std::string& improper_text, TimeWeightedData& out);

// The sigma estimate of the data: MR-bar / 1.128 for individual values;
// s-bar / c4(n) for subgroups, c4 read from the C4 table up to n = 25 and
// 4(n - 1) / (4n - 3) beyond.
double EstimateSigma(const std::vector<double>& individual_values);
double EstimateSigma(double s_bar, long n);

// The process level and sigma a dialog confirmed: empty where the user left
// the text box empty, so that the data decide.
struct ProcessParameters {
  std::optional<double> target;  // mu0
  std::optional<double> sigma;
};

// mu0 and sigma in force: the given ones, or the mean of the points rounded
// to 8 places and the estimated sigma.
struct ProcessLevel {
  double target = 0.0;
  double sigma = 0.0;
};
ProcessLevel ResolveProcess(const ProcessParameters& given, const TimeWeightedData& data);

// The dialog base of the three charts: Targettxt (mu0) and Sigmatxt
// (sigma), each empty for "from the data", then the chart's own text boxes,
// then CmdOk and CmdCancel. Cancel writes nothing: these charts have no
// cancel line.
class TimeWeightedForm : public shell::DialogModel {
 protected:
  // `chart` names the chart in its cancel line.
  TimeWeightedForm(std::string name, std::string caption, std::string chart);
  // Adds CmdOk and CmdCancel after the chart's own controls.
  void AddButtons();
  // Reads Targettxt and Sigmatxt into `out`. Text that is not a number, or
  // a sigma not above 0, is refused with "Please, input valid numerical
  // data" and false is returned.
  bool ReadProcess(shell::Host& host, ProcessParameters& out) const;
  // The number in text box `control`, or nothing after the same refusal
  // when it is not a number or `valid` rejects it.
  template <class Valid>
  std::optional<double> ReadNumber(shell::Host& host, const char* control, Valid&& valid) const {
    const std::optional<double> number = TextNumber(Control(control).text);
    if (!number || !valid(*number)) {
      host.Refuse(kInvalidNumber);
      return std::nullopt;
    }
    return number;
  }
  void OnCancel(shell::Host& host) override;

 private:
  static std::optional<double> TextNumber(const std::string& text);

  std::string chart_;
};

// A chart whose limits change from point to point (EWMA, MA): its points
// and per-point limits around a constant centre line. Only a point beyond
// its own limits is coded ("* "): successive values of these statistics
// are correlated, and the run rules would flag in-control data.
struct PointLimitChart {
  std::string statistic;  // "EWMA", "MA"
  std::string pointHeading;  // "x" or "xbar": the input points beside the statistic
  shell::NumberSeries points;
  shell::NumberSeries values;
  shell::NumberSeries ucl;
  shell::NumberSeries lcl;
  double cl = 0.0;
  std::vector<CodeMask> codes;
};

// Codes every point strictly beyond its own limits.
void MarkBeyondLimits(PointLimitChart& chart);

// The range chart of subgroups of 2 to 25 from sigma: UCL = D2[n - 2] sigma
// from the D2 table, CL = d2(n) sigma, LCL = (d2(n) - 3 d3(n)) sigma floored
// at 0, all rounded to 8 places, with d2 and d3 of the normal range. Its
// points are coded "* " only. Nothing for other n.
ControlLimits RangeLimitsFromSigma(double sigma, long n);
std::optional<ControlChart> RangeChart(const TimeWeightedData& data, double sigma);

// The window of an EWMA or MA chart: ChartOne draws the statistic, its
// limits as stepped lines and the centre line, and labels the last point's
// limits; ChartTwo, when there is one, the range chart. The grid holds the
// input points, the statistic, "UCL", "CL", "LCL", "Out-of-control Code",
// then the range chart's "R", "R UCL", "R CL", "R LCL", "R Code", then the
// legend.
shell::ResultWindow PointLimitWindow(const std::string& title, const std::string& key, const PointLimitChart& chart,
                                     const std::optional<ControlChart>& ranges);

// A limit that changes from point to point as a stepped line over points
// 1..N: each value runs from half a sample before its point to half a
// sample after it, and a run of equal values is one step.
shell::PlotSeries SteppedLine(std::string name, const std::vector<double>& limit);

}  // namespace orvik::charts
