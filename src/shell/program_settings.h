#pragma once

#include <any>
#include <array>
#include <map>
#include <string>
#include <typeindex>
#include <typeinfo>

namespace orvik::shell {

// One chart's limits as the user typed them in the given-limits dialog.
struct GivenLimitTexts {
  std::string UCL;
  std::string CL;
  std::string LCL;
};

// Control limits given by the user (dialogs ControlLimit and ControlTwoLimit).
// While `use` is set, every control chart replaces its computed UCL, CL and
// LCL with these: charts[0] for the only or upper chart of a window,
// charts[1] for the lower chart. The texts are kept as typed and converted
// when a chart reads them; a set left empty keeps the computed limits.
struct GivenLimits {
  bool use = false;
  std::array<GivenLimitTexts, 2> charts;
};

// What lives for the whole run beside the session log: the given control
// limits, which every control chart reads, and the parameters each dialog
// last confirmed, which a dialog may show again as its defaults.
class ProgramSettings {
 public:
  GivenLimits givenLimits;

  // The record of type P that a dialog last confirmed; P's default values
  // until the first confirmation. Every dialog has a record type of its own,
  // so the type names the slot and the shell needs no analysis's headers.
  template <class P>
  P& Last() {
    auto [slot, added] = last_.try_emplace(std::type_index(typeid(P)), std::in_place_type<P>);
    return std::any_cast<P&>(slot->second);
  }

 private:
  std::map<std::type_index, std::any> last_;
};

}  // namespace orvik::shell
