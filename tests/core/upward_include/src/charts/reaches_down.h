// A charts header that includes a lower layer, which the layering check
// allows.
#pragma once

#include "shell/host.h"
