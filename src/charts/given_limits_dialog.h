#pragma once

#include <memory>

#include "shell/dialog_model.h"
#include "shell/program_settings.h"

namespace orvik::charts {

// The given-limits dialogs: `ControlLimit` for a one-chart window (text
// boxes UCLtxt, CLtxt, LCLtxt) and `ControlTwoLimit` for a two-chart window
// (UCL1txt ... LCL2txt). AnalysisOpt (limits computed from the data) and
// ControlOpt (limits given by the user) choose the source; OK (`Okay`)
// stores the choice in the program-wide GivenLimits.
class GivenLimitsDialog : public shell::DialogModel {
 public:
  explicit GivenLimitsDialog(int chart_count);

  int ChartCount() const { return chart_count_; }
  // Shows the limits in force: ControlOpt with the given texts while they
  // are used, AnalysisOpt otherwise.
  void LoadFrom(const shell::GivenLimits& given);

 protected:
  void OnClick(const std::string& control) override;
  bool OnOk(shell::Host& host) override;
  void OnCancel(shell::Host& host) override;

 private:
  std::string BoxName(const char* limit, int chart) const;
  void EnableLimitBoxes(bool enabled);

  int chart_count_;
};

std::unique_ptr<shell::DialogModel> MakeControlLimit();
std::unique_ptr<shell::DialogModel> MakeControlTwoLimit();

}  // namespace orvik::charts
