#include "analyses/analysis_dialog.h"

#include <cmath>

#include "shell/host.h"
#include "worksheet/cell_number.h"

namespace orvik::analyses {

AnalysisDialog::AnalysisDialog(std::string name, std::string caption, std::string cancel_line)
    : DialogModel(std::move(name), std::move(caption)), cancel_line_(std::move(cancel_line)) {}

void AnalysisDialog::AddSigmaChoice(std::vector<std::string> sigma_boxes) {
  AddOptionButton("EstSigma", "sigma", true).caption = "Estimate sigma from the data";
  AddOptionButton("Inputsigma", "sigma", false).caption = "Known sigma";
  sigma_boxes_ = std::move(sigma_boxes);
  for (const auto& box : sigma_boxes_) AddTextBox(box, "1.0").caption = "Sigma";
  UpdateSigmaBoxes();
}

void AnalysisDialog::UpdateSigmaBoxes() {
  const bool estimated = SigmaEstimated();
  for (const auto& box : sigma_boxes_) {
    shell::DialogControl& control = MutableControl(box);
    if (estimated) control.text = "1.0";
    control.enabled = !estimated && Control("Inputsigma").enabled;
  }
}

void AnalysisDialog::EnableSigmaChoice(bool enabled) {
  MutableControl("EstSigma").enabled = enabled;
  MutableControl("Inputsigma").enabled = enabled;
  UpdateSigmaBoxes();
}

void AnalysisDialog::AddAlternativeChoice() {
  AddTextBox("alphatxt", "5").caption = "Significance level (%)";
  AddOptionButton("TwoSided", "alternative", true).caption = "Two-sided";
  AddOptionButton("Greater", "alternative", false).caption = "Greater than";
  AddOptionButton("Less", "alternative", false).caption = "Less than";
}

Alternative AnalysisDialog::ChosenAlternative() const {
  if (Control("Greater").checked) return Alternative::Greater;
  if (Control("Less").checked) return Alternative::Less;
  return Alternative::TwoSided;
}

void AnalysisDialog::AddOkCancel() {
  AddCommandButton("CmdOk", "OK");
  AddCommandButton("CmdCancel", "Cancel");
}

std::optional<double> AnalysisDialog::Number(const std::string& box) const {
  return worksheet::ParseCellNumber(Control(box).text);
}

std::optional<double> AnalysisDialog::PositiveNumber(const std::string& box) const {
  const auto value = Number(box);
  if (!value || !(*value > 0.0)) return std::nullopt;
  return value;
}

std::optional<double> AnalysisDialog::AlphaPercent() const {
  const auto value = Number("alphatxt");
  if (!value || !(*value > 0.0 && *value < 100.0)) return std::nullopt;
  return value;
}

std::optional<ProportionCounts> AnalysisDialog::Counts(const std::string& defects_box,
                                                       const std::string& sample_box) const {
  const auto defects = Number(defects_box);
  const auto sample = Number(sample_box);
  // Counts of items are whole numbers; the bound keeps them within a long.
  const auto whole = [](double x) { return x >= 0.0 && x <= 1e15 && x == std::floor(x); };
  if (!defects || !sample || !whole(*defects) || !whole(*sample) || *sample < 1.0 || *defects > *sample)
    return std::nullopt;
  return ProportionCounts{static_cast<long>(*defects), static_cast<long>(*sample)};
}

void AnalysisDialog::OnClick(const std::string& control) {
  if (control == "EstSigma" || control == "Inputsigma") UpdateSigmaBoxes();
}

void AnalysisDialog::OnCancel(shell::Host& host) {
  if (!cancel_line_.empty()) host.Log().AppendSessionLine(cancel_line_);
}

}  // namespace orvik::analyses
