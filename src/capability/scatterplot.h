#pragma once

#include <memory>
#include <string>
#include <vector>

#include "analyses/analysis_dialog.h"
#include "shell/host.h"
#include "shell/result_window.h"

namespace orvik::capability {

// What DotplotForm confirms.
struct DotplotSettings {
  bool FitLine = false;      // draw the least-squares line with its equation and R²
  bool GroupColumn = false;  // colour the points by the third column's values
};

// The scatterplot's dialog: check boxes FitLine and GroupColumn (enabled
// only for a block of three columns, and then checked), buttons CmdOk and
// CmdCancel. Cancel writes "Cancel scatterplot generation".
class DotplotForm : public analyses::AnalysisDialog {
 public:
  using Parameters = DotplotSettings;
  DotplotForm(const DotplotSettings& previous, bool three_columns);
  const DotplotSettings& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override;

 private:
  DotplotSettings result_;
};
std::unique_ptr<shell::DialogModel> MakeDotplotForm();

// The pairs of the scatterplot: rows whose x and y cells both hold numbers,
// with the group text of each (empty without grouping).
struct ScatterPairs {
  std::string xName;
  std::string yName;
  std::vector<double> x;
  std::vector<double> y;
  std::vector<std::string> group;
};

shell::ResultWindow DotplotWindow(const ScatterPairs& pairs, const DotplotSettings& settings);

// The scatterplot (tool key "mnuDotplot"): x from the left column of the
// block, y from the right one, and with a third column its values as
// groups. A block of other than two or three columns is refused with
// "Please, select two columns"; a row with a missing or non-numeric cell on
// either side is left out. Fewer than three pairs give "All data are not
// enough to analysis", x or y without spread "All data are same".
void DotplotView(shell::Host& host);

}  // namespace orvik::capability
