#include "analyses/confidence_levels.h"

namespace orvik::analyses {

int TTableRow(long df) {
  if (df <= 30) return static_cast<int>(df - 1);
  if (df <= 40) return 30;
  if (df <= 50) return 31;
  if (df <= 60) return 32;
  if (df <= 80) return 33;
  if (df <= 100) return 34;
  if (df <= 120) return 35;
  if (df <= 1000) return 36;
  return 37;
}

int FTableRow(long df) {
  if (df <= 30) return static_cast<int>(df - 1);
  if (df <= 40) return 30;
  if (df <= 60) return 31;
  if (df <= 120) return 32;
  return 33;
}

}  // namespace orvik::analyses
