#include "analyses/gage_rr_factor.h"

#include <cmath>
#include <set>

#include "shell/host.h"

namespace orvik::analyses {

namespace {

std::string NameBox(long i) { return "Name" + std::to_string(i) + "txt"; }

constexpr long kMaxParts = 50;
constexpr long kMaxTrials = 10;
constexpr double kLargestSeed = 4294967295.0;

}  // namespace

GageRRFactor::GageRRFactor() : AnalysisDialog("GageRRFactor", "Gage R&R Study", kCancelGageStudy) {
  const GageRRSettings defaults;
  AddTextBox("Appraiserstxt", std::to_string(defaults.appraisers)).caption = "Number of appraisers";
  for (long i = 1; i <= kMaxAppraisers; ++i)
    AddTextBox(NameBox(i), std::string(1, static_cast<char>('A' + i - 1))).caption = "Appraiser " + std::to_string(i);
  AddTextBox("Partstxt", std::to_string(defaults.parts)).caption = "Number of parts";
  AddTextBox("Trialstxt", std::to_string(defaults.trials)).caption = "Number of trials";
  AddCheckBox("Randomize", defaults.randomize).caption = "Randomize runs";
  AddTextBox("Seedtxt").caption = "Base for random numbers";
  AddTextBox("Tolerancetxt").caption = "Process tolerance (upper - lower spec)";
  AddTextBox("Multipliertxt", "6").caption = "Study variation (sigma multiplier)";
  AddOptionButton("ANOVAMethod", "method", true).caption = "ANOVA method";
  AddOptionButton("XbarRMethod", "method", false).caption = "Xbar and R method";
  AddOkCancel();
  UpdateEnabling();
}

void GageRRFactor::UpdateEnabling() {
  const long count = WholeNumber("Appraiserstxt", 2, kMaxAppraisers).value_or(0);
  for (long i = 1; i <= kMaxAppraisers; ++i) MutableControl(NameBox(i)).enabled = i <= count;
  MutableControl("Seedtxt").enabled = Control("Randomize").checked;
}

void GageRRFactor::OnClick(const std::string& control) {
  if (control == "Randomize") UpdateEnabling();
  AnalysisDialog::OnClick(control);
}

void GageRRFactor::OnFocusLost(const std::string& control) {
  if (control == "Appraiserstxt") UpdateEnabling();
}

std::optional<long> GageRRFactor::WholeNumber(const std::string& box, long low, long high) const {
  const auto value = Number(box);
  if (!value || *value != std::floor(*value) || *value < static_cast<double>(low) || *value > static_cast<double>(high))
    return std::nullopt;
  return static_cast<long>(*value);
}

bool GageRRFactor::OnOk(shell::Host& host) {
  const auto appraisers = WholeNumber("Appraiserstxt", 2, kMaxAppraisers);
  const auto parts = WholeNumber("Partstxt", 2, kMaxParts);
  const auto trials = WholeNumber("Trialstxt", 2, kMaxTrials);
  const auto multiplier = PositiveNumber("Multipliertxt");
  const bool randomize = Control("Randomize").checked;
  const std::string& seed_text = Control("Seedtxt").text;
  const std::string& tolerance_text = Control("Tolerancetxt").text;
  const auto seed = Number("Seedtxt");
  const auto tolerance = PositiveNumber("Tolerancetxt");
  bool valid = appraisers && parts && trials && multiplier;
  valid = valid && (!randomize || seed_text.empty() ||
                    (seed && *seed >= 0.0 && *seed <= kLargestSeed && *seed == std::floor(*seed)));
  valid = valid && (tolerance_text.empty() || tolerance);
  // The appraisers' names label the study sheet's rows: each is needed and
  // must tell its appraiser apart.
  std::vector<std::string> names;
  std::set<std::string> distinct;
  for (long i = 1; valid && i <= *appraisers; ++i) {
    names.push_back(Control(NameBox(i)).text);
    valid = !names.back().empty() && distinct.insert(names.back()).second;
  }
  if (!valid) {
    host.Refuse(kInvalidNumericalData);
    return false;
  }
  result_ = {*appraisers,
             std::move(names),
             *parts,
             *trials,
             randomize,
             randomize && !seed_text.empty() ? std::optional<std::uint32_t>(static_cast<std::uint32_t>(*seed))
                                             : std::nullopt,
             tolerance_text.empty() ? std::nullopt : tolerance,
             *multiplier,
             Control("XbarRMethod").checked ? GageMethod::XbarR : GageMethod::Anova};
  // The settings stand for the study until the next one is designed, also
  // when the dialog is confirmed before an analysis of a worksheet block.
  host.Settings().Last<GageRRSettings>() = result_;
  return true;
}

std::unique_ptr<shell::DialogModel> MakeGageRRFactor() { return std::make_unique<GageRRFactor>(); }

}  // namespace orvik::analyses
