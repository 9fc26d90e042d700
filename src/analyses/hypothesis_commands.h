#pragma once

#include "shell/host.h"

namespace orvik::analyses {

// The hypothesis-test commands. Each reads its data (the selected block, two
// columns, or counts typed in its dialog), asks the hypothesis, the
// significance level and the alternative, and shows the three-section report
// in a result window, with the descriptive figures of the samples under it.

void MeanHypothesis(shell::Host& host);              // "mnuMeanHypoth"
void VarianceHypothesis(shell::Host& host);          // "mnuVarianceHypoth"
void ProportionHypothesis(shell::Host& host);        // "mnuRatioHypoth"
void TwoProportionHypothesis(shell::Host& host);     // "mnuRatioDiffHypoth"
void TwoHypothVariance(shell::Host& host);           // "mnuVarDiffHypoth"
void TwoHypothMean(shell::Host& host);               // "mnuIndependent"
void TwoHypothPairedMean(shell::Host& host);         // "mnuHypoPaired"

}  // namespace orvik::analyses
