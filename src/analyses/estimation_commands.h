#pragma once

#include "analyses/analysis_settings.h"
#include "shell/host.h"

namespace orvik::analyses {

// The interval-estimation commands. Each reads its data (the selected block
// or the counts typed in its dialog), asks its parameters where it has any,
// and shows its intervals with the descriptive figures in a result window.

// "mnuMeanEst": the mean of one block, sigma given or estimated (Estimation).
void MeanEstimation(shell::Host& host);
// "mnuVarianceEst": the variance of one block.
void VarianceEstimation(shell::Host& host);
// "mnuRatioEst": a proportion from the counts typed in Proportions.
void ProportionEstimation(shell::Host& host);
// "mnuTwoMean": checks the two-column selection, writes
// "Estimation for 2-sample mean is starting" and asks the sigmas in
// TwoEstimation; OK runs DiffMeanView with them.
void DiffMeanSelection(shell::Host& host);
// The difference of the means of the two columns of the current selection,
// with the sigmas of `settings` where they are given.
void DiffMeanView(shell::Host& host, const DiffMeanIntervalSettings& settings);
// "mnuPaired": the mean of the row-by-row differences of two columns.
void PairedDiffMean(shell::Host& host);
// "mnuRatioVarEst": the ratio of the variances of two columns.
void RatioVariance(shell::Host& host);
// "mnuRatioProEst": the difference of two proportions typed in TwoProportions.
void TwoProportionEstimation(shell::Host& host);

}  // namespace orvik::analyses
