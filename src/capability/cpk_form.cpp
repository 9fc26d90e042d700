#include "capability/cpk_form.h"

#include <cmath>
#include <string>

#include "shell/host.h"
#include "stats/decimal_numbers.h"
#include "worksheet/cell_number.h"

namespace orvik::capability {

namespace {

constexpr const char* kImproperData = "Include improper data";
constexpr const char* kImproperSubgroupSize = "Include improper subgroup size";
constexpr const char* kSubgroupSizeBelowTwo = "If subgroup size < 2 then input proper subgroup size";
constexpr const char* kCancelLine = "Cancel input specification";

}  // namespace

CpkForm::CpkForm(const CpkSettings& previous) : DialogModel("CpkForm", "Process capability analysis") {
  const bool two_sided = previous.UseUpper && previous.UseLower;
  AddOptionButton("TwoOpt", "sides", two_sided).caption = "Two-sided";
  AddOptionButton("OneOpt", "sides", !two_sided).caption = "One-sided";
  AddOptionButton("UpOpt", "oneside", two_sided || previous.UseUpper).caption = "Upper limit only";
  AddOptionButton("LowOpt", "oneside", !two_sided && previous.UseLower).caption = "Lower limit only";
  AddTextBox("Uppertxt", previous.confirmed && previous.UseUpper ? stats::FormatNumber(previous.USL) : "")
      .caption = "Upper specification limit (USL)";
  AddTextBox("Lowertxt", previous.confirmed && previous.UseLower ? stats::FormatNumber(previous.LSL) : "")
      .caption = "Lower specification limit (LSL)";
  AddOptionButton("SubYes", "subgroups", previous.UseSubgroups).caption = "Subgroups";
  AddOptionButton("SubNo", "subgroups", !previous.UseSubgroups).caption = "No subgroups (moving range)";
  AddTextBox("Subsize", std::to_string(previous.SubgroupSize)).caption = "Subgroup size";
  AddCommandButton("UpDown", "Subgroup size + 1");
  AddCommandButton("CpkOk", "OK");
  AddCommandButton("CpkCancle", "Cancel");
  UpdateEnabling();
}

void CpkForm::UpdateEnabling() {
  const bool one_sided = Control("OneOpt").checked;
  const bool upper_only = one_sided && Control("UpOpt").checked;
  const bool lower_only = one_sided && Control("LowOpt").checked;
  MutableControl("UpOpt").enabled = one_sided;
  MutableControl("LowOpt").enabled = one_sided;
  MutableControl("Uppertxt").enabled = !one_sided || upper_only;
  MutableControl("Lowertxt").enabled = !one_sided || lower_only;
  const bool subgroups = Control("SubYes").checked;
  MutableControl("Subsize").enabled = subgroups;
  MutableControl("UpDown").enabled = subgroups;
}

void CpkForm::OnClick(const std::string& control) {
  if (control == "UpDown") {
    const auto size = worksheet::ParseCellNumber(Control("Subsize").text);
    const double next = size && *size >= 2 ? std::floor(*size) + 1 : 2;
    MutableControl("Subsize").text = stats::FormatNumber(next);
  }
  UpdateEnabling();
}

void CpkForm::OnFocusLost(const std::string& control) {
  shell::DialogControl& box = MutableControl(control);
  if ((control == "Uppertxt" || control == "Lowertxt") && box.text.empty()) box.text = "0";
  if (control == "Subsize") {
    const auto size = worksheet::ParseCellNumber(box.text);
    if (!size || *size < 2) box.text = "2";
  }
}

bool CpkForm::OnOk(shell::Host& host) {
  CpkSettings settings;
  const bool one_sided = Control("OneOpt").checked;
  settings.UseUpper = !one_sided || Control("UpOpt").checked;
  settings.UseLower = !one_sided || Control("LowOpt").checked;
  const auto upper = worksheet::ParseCellNumber(Control("Uppertxt").text);
  const auto lower = worksheet::ParseCellNumber(Control("Lowertxt").text);
  if ((settings.UseUpper && !upper) || (settings.UseLower && !lower) ||
      (settings.UseUpper && settings.UseLower && *lower >= *upper)) {
    host.Refuse(kImproperData);
    return false;
  }
  if (settings.UseUpper) settings.USL = *upper;
  if (settings.UseLower) settings.LSL = *lower;

  settings.UseSubgroups = Control("SubYes").checked;
  if (settings.UseSubgroups) {
    // A subgroup size counts values, so it must be a whole number.
    const auto size = worksheet::ParseCellNumber(Control("Subsize").text);
    if (!size || *size != std::floor(*size) || *size > 1e9) {
      host.Refuse(kImproperSubgroupSize);
      return false;
    }
    if (*size < 2) {
      host.Refuse(kSubgroupSizeBelowTwo);
      return false;
    }
    settings.SubgroupSize = static_cast<long>(*size);
  }
  settings.confirmed = true;
  result_ = settings;
  return true;
}

std::unique_ptr<shell::DialogModel> MakeCpkForm() { return std::make_unique<CpkForm>(); }

void CpkForm::OnCancel(shell::Host& host) { host.Log().AppendSessionLine(kCancelLine); }

}  // namespace orvik::capability
