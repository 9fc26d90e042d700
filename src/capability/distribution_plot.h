#pragma once

#include <memory>
#include <string>
#include <vector>

#include "analyses/analysis_dialog.h"
#include "shell/host.h"
#include "shell/result_window.h"

namespace orvik::capability {

// What the probability calculator answers besides the plot.
enum class DistributionQuestion { PlotOnly, CDFLower, CDFUpper, Between, Inverse };

// What DistributionForm confirms.
struct DistributionSettings {
  std::string family = "Normal";  // a name of stats::DistributionFamilies()
  std::vector<double> parameters{0.0, 1.0};
  DistributionQuestion question = DistributionQuestion::PlotOnly;
  double x = 0.0;   // CDFLower, CDFUpper, and the lower end of Between
  double x2 = 0.0;  // the upper end of Between
  double probability = 0.5;  // Inverse
};

// The distribution plot's dialog. Controls: the text box Distribution (a
// family name: "Normal", "t", "Chi-Square", "F", "Exponential", "Uniform",
// "Lognormal", "Weibull", "Gamma", "Beta", "Binomial", "Poisson",
// "Hypergeometric"; case does not matter), the parameter boxes Param1txt
// to Param3txt (leaving Distribution with a new family fills them with that
// family's defaults and enables as many as it has), the option buttons
// PlotOnly, CDFLower, CDFUpper, Between and Inverse with the boxes they
// enable, Xtxt, X2txt and Probtxt, and the buttons CmdOk and CmdCancel. OK
// refuses an unknown family, parameters outside the family's domain and a
// number it needs that is missing with "Please, input valid numerical data".
class DistributionForm : public analyses::AnalysisDialog {
 public:
  using Parameters = DistributionSettings;
  explicit DistributionForm(const DistributionSettings& previous = {});
  const DistributionSettings& Result() const { return result_; }

 protected:
  void OnClick(const std::string& control) override;
  void OnFocusLost(const std::string& control) override;
  bool OnOk(shell::Host& host) override;

 private:
  void ShowFamily(const std::string& name, bool defaults);
  void UpdateEnabling();

  DistributionSettings result_;
  std::string shown_family_;
};
std::unique_ptr<shell::DialogModel> MakeDistributionForm();

// The plot of the density (or probability mass) with the cumulative
// distribution on the right-hand axis, the asked area shaded, and a grid of
// the family, its parameters and the calculator's numbers.
shell::ResultWindow DistributionWindow(const DistributionSettings& settings);

// The distribution plot (tool key "mnuDistribution"): needs no block.
void DistributionView(shell::Host& host);

}  // namespace orvik::capability
