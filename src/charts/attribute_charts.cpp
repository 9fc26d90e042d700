// The c and np control charts: one column of counts, one sample per row.
#include <algorithm>
#include <string>

#include "charts/chart_limits.h"
#include "charts/chart_stages.h"
#include "charts/control_charts.h"
#include "charts/control_form.h"
#include "shell/analysis_input.h"
#include "worksheet/cell_number.h"

namespace orvik::charts {

namespace {

constexpr const char* kInputValidData = "Please, input valid data";

// The block must be one column: the user's block may not span columns, and
// a whole-sheet or whole-row selection passes only when the data it
// resolves to is one column.
bool RequireOneColumn(shell::Host& host, const char* refusal_text) {
  const worksheet::Worksheet* sheet = host.ActiveWorksheet();
  const worksheet::DataSelection& selection = host.CurrentSelection();
  if (sheet != nullptr && worksheet::SelectedColumnSpan(sheet->Selection) == 1 &&
      selection.firstColumn == selection.lastColumn)
    return true;
  host.Refuse(refusal_text);
  return false;
}

// The steps both charts begin with: the block, the one-column check, the
// starting line, then every cell of the column must be a number. A block
// that starts below the data holds no cell to read; it is refused like a
// block of empty cells rather than ending the command without a word.
bool ReadCounts(shell::Host& host, const std::string& name, const char* one_column_text, std::vector<double>& out) {
  if (!shell::ResolveDataBlock(host)) return false;
  if (!RequireOneColumn(host, one_column_text)) return false;
  host.Log().AppendSessionLine(StartingLine(name));
  if (!shell::CollectNumericCells(host, worksheet::CellPolicy::Refuse, kInputValidData)) return false;
  out = host.CurrentSelection().values;
  if (out.empty()) {
    host.Refuse(kInputValidData);
    return false;
  }
  return true;
}

// The sample size dialog. `floor` is the least n it accepts.
class PnSubForm : public shell::DialogModel {
 public:
  using Parameters = NpSampleSize;

  explicit PnSubForm(double floor = 0.0) : shell::DialogModel("PnSubForm", "Sample Size"), floor_(floor) {
    AddTextBox("Pntxt").caption = "Sample size (n)";
    AddCommandButton("PnOk", "OK");
    AddCommandButton("PnCancle", "Cancel");
  }

  const NpSampleSize& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override {
    // Text that is not a number reads as 0, and only 0 is refused as not a
    // number. Every other size below the largest count is improper, since no
    // sample holds more nonconforming units than its size; so is a negative
    // size, which counts below zero would otherwise let through.
    const double n = worksheet::ParseCellNumber(Control("Pntxt").text).value_or(0.0);
    if (n == 0) {
      host.Refuse("Please, input valid numerical data");
      return false;
    }
    if (n < 0 || n < floor_) {
      host.Refuse("Improper data for np control chart");
      return false;
    }
    result_.n = n;
    return true;
  }
  void OnCancel(shell::Host& host) override { host.Log().AppendSessionLine(CancelLine("np")); }

 private:
  double floor_;
  NpSampleSize result_;
};

}  // namespace

std::unique_ptr<shell::DialogModel> MakePnSubForm() { return std::make_unique<PnSubForm>(); }

void CView(shell::Host& host) {
  const std::string name = "c";
  std::vector<double> counts;
  if (!ReadCounts(host, name, "Please select one column only ", counts)) return;
  RunChartComputation(host, name, [&] {
    const StageLimits limits_of = [&](std::size_t first, std::size_t count) {
      ControlLimits limits = CLimits({counts.begin() + static_cast<long>(first),
                                      counts.begin() + static_cast<long>(first + count)});
      ApplyGivenLimits(host.Settings().givenLimits, 0, kCSigma, limits);
      return limits;
    };
    const ControlChart chart = RuledChart("c", counts, limits_of, ChartOptionsOf(host, counts.size()));
    host.ShowResultWindow(OneChartWindow("c control chart", "mnuC", chart));
  });
  host.Log().AppendSessionLine(CompletedLine(name));
}

void PnView(shell::Host& host) {
  const std::string name = "np";
  std::vector<double> counts;
  if (!ReadCounts(host, name, worksheet::messages::kSelectOneColumnOnly, counts)) return;
  // No sample can hold more nonconforming units than its size, so the
  // largest count is the least n the dialog accepts.
  PnSubForm dialog(*std::max_element(counts.begin(), counts.end()));
  const auto size = shell::AskParameters(host, dialog);
  if (!size) return;
  RunChartComputation(host, name, [&] {
    const StageLimits limits_of = [&](std::size_t first, std::size_t count) {
      ControlLimits limits = NpLimits({counts.begin() + static_cast<long>(first),
                                       counts.begin() + static_cast<long>(first + count)}, size->n);
      ApplyGivenLimits(host.Settings().givenLimits, 0, kNpSigma, limits);
      return limits;
    };
    ControlChart chart = RuledChart("np", counts, limits_of, ChartOptionsOf(host, counts.size()));
    chart.valueDecimals = 12;
    host.ShowResultWindow(OneChartWindow("np control chart", "mnuPn", chart));
  });
  host.Log().AppendSessionLine(CompletedLine(name));
}

}  // namespace orvik::charts
