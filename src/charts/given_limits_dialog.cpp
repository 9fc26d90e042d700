#include "charts/given_limits_dialog.h"

#include <array>

#include "shell/host.h"
#include "worksheet/cell_number.h"
#include "worksheet/data_selection.h"

namespace orvik::charts {

GivenLimitsDialog::GivenLimitsDialog(int chart_count)
    : shell::DialogModel(chart_count == 1 ? "ControlLimit" : "ControlTwoLimit", "Control Limits"),
      chart_count_(chart_count) {
  AddOptionButton("AnalysisOpt", "source", true).caption = "Limits from the data";
  AddOptionButton("ControlOpt", "source").caption = "Given limits";
  // Labelled "UCL", or "Chart 1 UCL" when the window has two charts.
  for (int chart = 0; chart < chart_count_; ++chart)
    for (const char* limit : {"UCL", "CL", "LCL"}) {
      shell::DialogControl& box = AddTextBox(BoxName(limit, chart));
      box.enabled = false;
      box.caption = (chart_count_ == 1 ? "" : "Chart " + std::to_string(chart + 1) + " ") + limit;
    }
  AddCommandButton("Okay", "OK");
  AddCommandButton("Cancel", "Cancel");
}

std::string GivenLimitsDialog::BoxName(const char* limit, int chart) const {
  return std::string(limit) + (chart_count_ == 1 ? "" : std::to_string(chart + 1)) + "txt";
}

void GivenLimitsDialog::EnableLimitBoxes(bool enabled) {
  for (int chart = 0; chart < chart_count_; ++chart)
    for (const char* limit : {"UCL", "CL", "LCL"}) MutableControl(BoxName(limit, chart)).enabled = enabled;
}

void GivenLimitsDialog::LoadFrom(const shell::GivenLimits& given) {
  for (int chart = 0; chart < chart_count_; ++chart) {
    const shell::GivenLimitTexts& texts = given.charts[static_cast<std::size_t>(chart)];
    MutableControl(BoxName("UCL", chart)).text = texts.UCL;
    MutableControl(BoxName("CL", chart)).text = texts.CL;
    MutableControl(BoxName("LCL", chart)).text = texts.LCL;
  }
  Click(given.use ? "ControlOpt" : "AnalysisOpt");
}

void GivenLimitsDialog::OnClick(const std::string& control) {
  if (control == "AnalysisOpt") EnableLimitBoxes(false);
  else if (control == "ControlOpt") EnableLimitBoxes(true);
}

bool GivenLimitsDialog::OnOk(shell::Host& host) {
  shell::GivenLimits& given = host.Settings().givenLimits;
  if (Control("AnalysisOpt").checked) {
    given.use = false;
    return true;
  }
  std::array<shell::GivenLimitTexts, 2> sets;
  for (int chart = 0; chart < chart_count_; ++chart) {
    const std::string& ucl_text = Control(BoxName("UCL", chart)).text;
    const std::string& cl_text = Control(BoxName("CL", chart)).text;
    const std::string& lcl_text = Control(BoxName("LCL", chart)).text;
    const auto ucl = worksheet::ParseCellNumber(ucl_text);
    const auto cl = worksheet::ParseCellNumber(cl_text);
    const auto lcl = worksheet::ParseCellNumber(lcl_text);
    // LCL may be zero or negative; only UCL and CL must be positive.
    const bool refused = !ucl || !cl || !lcl || *cl >= *ucl || *lcl >= *cl || *lcl >= *ucl || *ucl <= 0 ||
                         *cl <= 0;
    if (refused) {
      host.Refuse(worksheet::messages::kIncludeImproper);
      return false;
    }
    sets[static_cast<std::size_t>(chart)] = {ucl_text, cl_text, lcl_text};
  }
  // The one-chart dialog empties the second set, so the lower chart of a
  // two-chart window keeps its computed limits.
  given.charts = sets;
  given.use = true;
  return true;
}

void GivenLimitsDialog::OnCancel(shell::Host&) {}

std::unique_ptr<shell::DialogModel> MakeControlLimit() { return std::make_unique<GivenLimitsDialog>(1); }
std::unique_ptr<shell::DialogModel> MakeControlTwoLimit() { return std::make_unique<GivenLimitsDialog>(2); }

}  // namespace orvik::charts
