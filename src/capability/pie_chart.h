#pragma once

#include <memory>
#include <string>
#include <vector>

#include "analyses/analysis_dialog.h"
#include "shell/host.h"
#include "shell/result_window.h"

namespace orvik::capability {

// What PieForm confirms.
struct PieSettings {
  bool SortSlices = false;      // largest slice first
  bool ExplodeLargest = false;  // the largest slice stands out
};

// The pie chart's dialog: check boxes SortSlices and ExplodeLargest,
// buttons CmdOk and CmdCancel. Cancel writes "Cancel pie chart generation".
class PieForm : public analyses::AnalysisDialog {
 public:
  using Parameters = PieSettings;
  explicit PieForm(const PieSettings& previous = {});
  const PieSettings& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override;

 private:
  PieSettings result_;
};
std::unique_ptr<shell::DialogModel> MakePieForm();

struct PieSlice {
  std::string name;
  double value = 0.0;
  double percent = 0.0;  // in hundredths of a percent, summing to exactly 100
};

// The slices' percentages to two decimals by the largest-remainder rule:
// each share is cut to whole hundredths and the hundredths left over go to
// the largest remainders (the earlier slice on a tie), so that the shown
// percentages add up to 100 exactly. The total must be positive.
void SetPercentages(std::vector<PieSlice>& slices);

shell::ResultWindow PieWindow(std::vector<PieSlice> slices, const PieSettings& settings);

// The pie chart (tool key "mnuPie"): one column of non-negative values, or
// a column of labels and one of values. Rows without a number are left
// out; a negative value is refused with "Please, input valid data", a
// total of zero with "Please, select valid data", more value columns with
// "Please select one column only".
void PieView(shell::Host& host);

}  // namespace orvik::capability
