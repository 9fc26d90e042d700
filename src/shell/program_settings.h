#pragma once

namespace orvik::shell {

// Program-wide settings: the parameters that dialogs store for the analyses
// to read, kept for the whole run (for example user-given control limits).
// Each analysis adds its own record here.
struct ProgramSettings {};

}  // namespace orvik::shell
