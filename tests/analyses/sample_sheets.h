#pragma once

// Sheets and hosts shared by the tests of the estimation and test commands.
#include <gtest/gtest.h>

#include <string>

#include "support/sheet_host.h"

namespace orvik::analyses {

inline const testing_support::SheetRows kFive = {{"1"}, {"2"}, {"3"}, {"4"}, {"5"}};
// Two samples side by side, the second one value shorter.
inline const testing_support::SheetRows kTwoColumns = {{"10.2", "9.8"}, {"9.9", "10.4"}, {"10.1", "10.0"},
                                                       {"10.4", "10.6"}, {"9.8", "10.3"}, {"10.0", "10.1"},
                                                       {"10.3", "10.5"}, {"9.7", ""}};

// A host whose user cancels `dialog` when it opens.
inline cli::CliHost CancellingHost(const testing_support::SheetRows& rows, worksheet::GridSelection selection,
                                   const std::string& dialog) {
  worksheet::Worksheet sheet = testing_support::MakeSheet(rows);
  sheet.Selection = selection;
  return cli::CliHost(std::move(sheet), {}, {dialog});
}

// The grid of the one window a command showed.
inline const shell::ResultTable& OnlyTable(const cli::CliHost& host) {
  EXPECT_EQ(host.Windows().size(), 1u);
  return *host.Windows().front().table;
}

}  // namespace orvik::analyses
