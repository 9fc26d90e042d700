#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "analyses/design_sheets.h"
#include "analyses/gage_rr_fit.h"

namespace orvik::analyses {

// The design and analysis settings of a gauge study, as GageRRFactor last
// confirmed them: the study sheet is laid out from the counts and names,
// and GageRRAnalysis reads the tolerance, the multiplier and the method.
struct GageRRSettings {
  long appraisers = 3;
  std::vector<std::string> appraiserNames{"A", "B", "C"};
  long parts = 10;
  long trials = 3;
  std::optional<std::uint32_t> seed;  // none: not randomized
  std::optional<double> tolerance;    // the process tolerance, when given
  double multiplier = 6.0;            // study variation = multiplier * sigma
  GageMethod method = GageMethod::Anova;
};

inline constexpr long kMaxAppraisers = 10;
inline constexpr const char* kCancelGageStudy = "Cancel Gagre R&R study";

// GageRRFactor: Appraiserstxt (2 to 10) with the names Name1txt to
// Name10txt (those beyond the count disabled), Partstxt (2 to 50),
// Trialstxt (2 to 10), the check box Randomize with Seedtxt (a whole number
// 0 to 4294967295, or empty for a fresh one written into the box; disabled
// without Randomize),
// Tolerancetxt (empty, or a positive tolerance), Multipliertxt (positive, 6
// by default) and the option buttons ANOVAMethod (chosen) and XbarRMethod.
// OK refuses anything else with "Please, input valid numerical data" and
// stays open; it stores the settings as the program's last study. Cancel
// writes "Cancel Gagre R&R study".
class GageRRFactor : public DesignDialog {
 public:
  using Parameters = GageRRSettings;
  GageRRFactor();
  const GageRRSettings& Result() const { return result_; }

 protected:
  void OnClick(const std::string& control) override;
  void OnFocusLost(const std::string& control) override;
  bool OnOk(shell::Host& host) override;
  void OnCancel(shell::Host& host) override;

 private:
  void UpdateEnabling();
  // The positive number in a box.
  std::optional<double> Positive(const std::string& box) const;

  GageRRSettings result_;
};
std::unique_ptr<shell::DialogModel> MakeGageRRFactor();

}  // namespace orvik::analyses
