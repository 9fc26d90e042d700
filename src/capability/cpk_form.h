#pragma once

#include <memory>

#include "capability/cpk_settings.h"
#include "shell/dialog_model.h"

namespace orvik::capability {

// The dialog of the capability study asking for its limits: two-sided or one-sided
// (upper or lower limit only) limits and the subgroup choice.
//
// Controls: option buttons TwoOpt / OneOpt, UpOpt / LowOpt (enabled for
// one-sided studies), text boxes Uppertxt and Lowertxt (enabled as the case
// needs them), option buttons SubYes / SubNo, the subgroup size Subsize with
// its up-down button UpDown (enabled with SubYes), buttons CpkOk and
// CpkCancle.
class CpkForm : public shell::DialogModel {
 public:
  using Parameters = CpkSettings;

  // The dialog as it opens, showing `previous` when a study was set up
  // earlier in the session.
  explicit CpkForm(const CpkSettings& previous = {});

  // What OK confirmed; valid after an accepted OK.
  const CpkSettings& Result() const { return result_; }

 protected:
  void OnClick(const std::string& control) override;
  void OnFocusLost(const std::string& control) override;
  bool OnOk(shell::Host& host) override;
  void OnCancel(shell::Host& host) override;

 private:
  void UpdateEnabling();

  CpkSettings result_;
};

// A fresh CpkForm with its defaults, for the dialog catalog.
std::unique_ptr<shell::DialogModel> MakeCpkForm();

}  // namespace orvik::capability
