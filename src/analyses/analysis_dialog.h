#pragma once

#include <optional>
#include <string>
#include <vector>

#include "analyses/analysis_settings.h"
#include "shell/dialog_model.h"

namespace orvik::analyses {

// The refusal of a number the user typed into an estimation or test dialog.
inline constexpr const char* kInvalidNumericalData = "Please, input valid numerical data";

// What the estimation and test dialogs share: the choice between an
// estimated and a given sigma, the typed counts of a proportion, the
// significance level with the alternative, OK and cancel buttons, and the
// cancel line.
class AnalysisDialog : public shell::DialogModel {
 public:
  AnalysisDialog(std::string name, std::string caption, std::string cancel_line);

 protected:
  // Option buttons EstSigma (chosen) and Inputsigma, and the text boxes of
  // the given sigmas, which hold "1.0" and are disabled while sigma is
  // estimated.
  void AddSigmaChoice(std::vector<std::string> sigma_boxes);
  bool SigmaEstimated() const { return Control("EstSigma").checked; }
  // The text box alphatxt ("5", in percent) and the option buttons
  // TwoSided (chosen), Greater and Less.
  void AddAlternativeChoice();
  Alternative ChosenAlternative() const;
  void AddOkCancel();

  // The number in a text box, when it is one.
  std::optional<double> Number(const std::string& box) const;
  // The number in a sigma box when it is positive.
  std::optional<double> PositiveNumber(const std::string& box) const;
  // The significance level in percent, when it lies strictly between 0 and 100.
  std::optional<double> AlphaPercent() const;
  // The counts typed in a defects box and a sample box: whole numbers with
  // 0 <= defects <= sample and sample >= 1.
  std::optional<ProportionCounts> Counts(const std::string& defects_box, const std::string& sample_box) const;
  // Enables or disables the sigma controls together (a test that has no
  // sigma disables them all).
  void EnableSigmaChoice(bool enabled);

  void OnClick(const std::string& control) override;
  void OnCancel(shell::Host& host) override;

 private:
  void UpdateSigmaBoxes();

  std::string cancel_line_;
  std::vector<std::string> sigma_boxes_;
};

}  // namespace orvik::analyses
