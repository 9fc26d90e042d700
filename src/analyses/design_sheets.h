#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "shell/dialog_model.h"
#include "worksheet/worksheet.h"

namespace orvik::shell {
class Host;
}

namespace orvik::analyses {

// The number of runs of any design the dialogs accept, at most.
inline constexpr long kMostDesignRuns = 100000;

// What the three design dialogs share: Replicatestxt ("1"), the check box
// Randomize (on) with Seedtxt (empty: a fresh seed), CmdOk and CmdCancel.
// They write no session line, not even on cancel; a refused entry shows
// "Please, input valid numerical data" and the dialog stays open.
class DesignDialog : public shell::DialogModel {
 public:
  using DialogModel::DialogModel;

 protected:
  void AddRandomization();
  void AddOkCancel();
  // The whole number in `box` when it lies within [low, high].
  std::optional<long> Whole(const std::string& box, long low, long high) const;
  // The chosen seed: nullopt when randomization is off; a fresh one, then
  // written into Seedtxt, when Seedtxt is empty. False when Seedtxt holds no whole number 0 to 2^32-1.
  bool ReadSeed(std::optional<std::uint32_t>& seed);
  bool Refuse(shell::Host& host) const;
  void OnCancel(shell::Host&) override {}
};

// One factor of named levels.
struct LevelFactor {
  std::string name;
  std::vector<std::string> levels;
};

// The design of the one- and two-factor dialogs.
struct LevelDesignSettings {
  std::vector<LevelFactor> factors;
  long replicates = 1;
  std::optional<std::uint32_t> seed;  // none: not randomized
};

// DOEOneFactor (one factor) and DOETwoFactor (two): for factor i the name
// Name<i>txt (A, B), the number of levels Levels<i>txt (2 to 20, default 2)
// and their names LevelNames<i>txt, separated by commas (empty: 1, 2, ...).
class LevelDesignDialog : public DesignDialog {
 public:
  using Parameters = LevelDesignSettings;
  LevelDesignDialog(std::string name, std::string caption, int factors);
  const LevelDesignSettings& Result() const { return result_; }

 protected:
  bool OnOk(shell::Host& host) override;

 private:
  int factors_;
  LevelDesignSettings result_;
};

std::unique_ptr<shell::DialogModel> MakeDOEOneFactor();
std::unique_ptr<shell::DialogModel> MakeDOETwoFactor();

// The design of the factorial dialog.
struct FactorialSettings {
  int factors = 2;
  long replicates = 1;
  long centerPoints = 0;
  bool halfFraction = false;
  std::vector<std::string> names;
  std::vector<double> lows;
  std::vector<double> highs;
  std::optional<std::uint32_t> seed;
};

// DOESelection: Factorstxt (2 to 5, default 2), Replicatestxt,
// CenterPointstxt (0 to 100, default 0), Name<i>txt, Low<i>txt, High<i>txt
// for i = 1 to 5 (A to E, -1, 1; those past the factor count disabled),
// HalfFraction (off; needs 3 factors or more) with the label Aliaseslbl
// showing its defining relation and aliases, Randomize, Seedtxt.
class DOESelection : public DesignDialog {
 public:
  using Parameters = FactorialSettings;
  DOESelection();
  const FactorialSettings& Result() const { return result_; }

 protected:
  void OnClick(const std::string& control) override;
  void OnFocusLost(const std::string& control) override;
  bool OnOk(shell::Host& host) override;

 private:
  void UpdateBoxes();
  FactorialSettings result_;
};

std::unique_ptr<shell::DialogModel> MakeDOESelection();

// The design sheets the dialogs make, named `name`: the columns StdOrder,
// RunOrder, (Label,) the factors and an empty Response as column header
// names, the runs in run order, and a description of the design (its size,
// seed, defining relation and aliases) in a column "Design" right of
// Response.
worksheet::Worksheet LevelDesignSheet(std::string name, const LevelDesignSettings& settings);
worksheet::Worksheet FactorialSheet(std::string name, const FactorialSettings& settings);

// The design commands "mnuOneDesign", "mnuTwoDesign", "mnuFactorDesign":
// their dialog, then a new design sheet "Design <n>". No session line.
void OneDesignView(shell::Host& host);
void TwoDesignView(shell::Host& host);
void FactorDesignView(shell::Host& host);

}  // namespace orvik::analyses
