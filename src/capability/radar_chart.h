#pragma once

#include <memory>
#include <optional>

#include "analyses/analysis_dialog.h"
#include "capability/graph_table.h"
#include "shell/host.h"
#include "shell/result_window.h"

namespace orvik::capability {

// What RadarForm confirms: the outer ring of the common scale every spoke
// shares, or none for the largest value of the data.
struct RadarSettings {
  std::optional<double> scaleMaximum;
};

// The radar chart's dialog: the text box Maxtxt (empty: the spokes run from
// 0 to the largest value; a number: from 0 to that number, which must be
// positive and not below the largest value), buttons CmdOk and CmdCancel.
class RadarForm : public analyses::AnalysisDialog {
 public:
  using Parameters = RadarSettings;
  RadarForm(const RadarSettings& previous, double largest_value);
  const RadarSettings& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override;

 private:
  RadarSettings result_;
  double largest_ = 0.0;
};
std::unique_ptr<shell::DialogModel> MakeRadarForm();

shell::ResultWindow RadarWindow(const GraphTable& table, double scale_maximum);

// The radar chart (tool key "mnuRader"): the rows of the block are the
// spokes (named by a first column of texts), every value column a polygon.
// A row with an empty or non-numeric cell is left out after the notice
// "Non-numeric data or empty cell's data are elimination". Fewer than
// three spokes give "All data are not enough to analysis", a negative
// value "Please, input valid data", no value above zero "Please, select
// valid data".
void RadarView(shell::Host& host);

}  // namespace orvik::capability
