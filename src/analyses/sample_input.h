#pragma once

#include <optional>
#include <string>

#include "analyses/sample_summary.h"
#include "shell/host.h"
#include "shell/result_table.h"

namespace orvik::analyses {

// The session lines of one command: "<stem> is starting", "<stem> is
// completed", and the line written when it fails or its dialog is cancelled.
struct SessionLines {
  std::string stem;
  std::string cancel;

  std::string Starting() const { return stem + " is starting"; }
  std::string Completed() const { return stem + " is completed"; }
};

// The input of the 1-sample intervals and tests: resolves the block, writes
// the starting line and reads the block's numbers. A block without any
// number shows "Please, input valid data" and writes the cancel line; a
// single number shows "All data are not enough to analysis". Returns the
// sample's summary when there are two numbers or more.
std::optional<SampleSummary> ReadOneSample(shell::Host& host, const SessionLines& lines);

// The selection of the 2-sample intervals and tests: resolves the block and
// requires it to span two columns ("Please, select two columns"). Nothing is
// written to the log on refusal.
bool ResolveTwoColumns(shell::Host& host);

// Shows `table` in a result window titled by the command's stem and writes
// the completed line.
void ShowReport(shell::Host& host, const SessionLines& lines, shell::ResultTable table);

// A run-time failure: "Please, input valid data" and the cancel line, then
// the command ends by throwing shell::CommandFailed.
void FailRun(shell::Host& host, const SessionLines& lines);

}  // namespace orvik::analyses
