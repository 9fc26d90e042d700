// A shell header that reaches into a higher layer: the layering check must
// reject it (test layering_check_rejects_an_upward_include).
#pragma once

#include "charts/control_form.h"
