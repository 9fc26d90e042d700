#include "analyses/gage_rr_factor.h"

#include <set>

#include "shell/host.h"
#include "worksheet/cell_number.h"

namespace orvik::analyses {

namespace {

std::string NameBox(long i) { return "Name" + std::to_string(i) + "txt"; }

constexpr long kMaxParts = 50;
constexpr long kMaxTrials = 10;

}  // namespace

GageRRFactor::GageRRFactor() : DesignDialog("GageRRFactor", "Gage R&R Study") {
  const GageRRSettings defaults;
  AddTextBox("Appraiserstxt", std::to_string(defaults.appraisers)).caption = "Number of appraisers";
  for (long i = 1; i <= kMaxAppraisers; ++i)
    AddTextBox(NameBox(i), std::string(1, static_cast<char>('A' + i - 1))).caption = "Appraiser " + std::to_string(i);
  AddTextBox("Partstxt", std::to_string(defaults.parts)).caption = "Number of parts";
  AddTextBox("Trialstxt", std::to_string(defaults.trials)).caption = "Number of trials";
  AddRandomization();
  AddTextBox("Tolerancetxt").caption = "Process tolerance (USL - LSL)";
  AddTextBox("Multipliertxt", "6").caption = "Study variation (sigma multiplier)";
  AddOptionButton("ANOVAMethod", "method", true).caption = "ANOVA method";
  AddOptionButton("XbarRMethod", "method", false).caption = "Xbar and R method";
  AddOkCancel();
  UpdateEnabling();
}

void GageRRFactor::UpdateEnabling() {
  const long count = Whole("Appraiserstxt", 2, kMaxAppraisers).value_or(0);
  for (long i = 1; i <= kMaxAppraisers; ++i) MutableControl(NameBox(i)).enabled = i <= count;
  MutableControl("Seedtxt").enabled = Control("Randomize").checked;
}

void GageRRFactor::OnClick(const std::string& control) {
  if (control == "Randomize") UpdateEnabling();
}

void GageRRFactor::OnFocusLost(const std::string& control) {
  if (control == "Appraiserstxt") UpdateEnabling();
}

std::optional<double> GageRRFactor::Positive(const std::string& box) const {
  const auto value = worksheet::ParseCellNumber(Control(box).text);
  if (!value || !(*value > 0.0)) return std::nullopt;
  return value;
}

bool GageRRFactor::OnOk(shell::Host& host) {
  const auto appraisers = Whole("Appraiserstxt", 2, kMaxAppraisers);
  const auto parts = Whole("Partstxt", 2, kMaxParts);
  const auto trials = Whole("Trialstxt", 2, kMaxTrials);
  const auto multiplier = Positive("Multipliertxt");
  const bool no_tolerance = Control("Tolerancetxt").text.empty();
  const auto tolerance = Positive("Tolerancetxt");
  if (!appraisers || !parts || !trials || !multiplier || !(no_tolerance || tolerance)) return Refuse(host);
  // The appraisers' names label the study sheet's rows: each is needed and
  // must tell its appraiser apart.
  std::vector<std::string> names;
  std::set<std::string> distinct;
  for (long i = 1; i <= *appraisers; ++i) {
    names.push_back(Control(NameBox(i)).text);
    if (names.back().empty() || !distinct.insert(names.back()).second) return Refuse(host);
  }
  std::optional<std::uint32_t> seed;
  if (!ReadSeed(seed)) return Refuse(host);
  result_ = {*appraisers,
             std::move(names),
             *parts,
             *trials,
             seed,
             no_tolerance ? std::nullopt : tolerance,
             *multiplier,
             Control("XbarRMethod").checked ? GageMethod::XbarR : GageMethod::Anova};
  // The settings stand for the study until the next one is designed, also
  // when the dialog is confirmed before an analysis of a worksheet block;
  // kept as options, they go with the runs that follow, so a block
  // analysis replays with the study's settings.
  host.Settings().Last<GageRRSettings>() = result_;
  host.KeepOptions(shell::ControlStates(*this));
  return true;
}

void GageRRFactor::OnCancel(shell::Host& host) { host.Log().AppendSessionLine(kCancelGageStudy); }

std::unique_ptr<shell::DialogModel> MakeGageRRFactor() { return std::make_unique<GageRRFactor>(); }

}  // namespace orvik::analyses
