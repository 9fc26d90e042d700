#include "shell/session_log.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvik::shell {
namespace {

// One CR LF between lines, none after the last; the listener hears each
// new line as it comes, an empty one too.
TEST(SessionLogTest, SeparatesLinesWithCarriageReturnLineFeedAndTellsItsListener) {
  SessionLog log;
  std::vector<std::string> seen;
  log.SetAppendListener([&seen](std::string_view line) { seen.emplace_back(line); });
  log.AppendSessionLine("Histogram generation is starting");
  log.AppendSessionLine("");
  EXPECT_EQ(seen, (std::vector<std::string>{"Histogram generation is starting", ""}));
  EXPECT_EQ(log.Text(), "Welcome to Orvik 2.0\r\nHistogram generation is starting\r\n");
}

}  // namespace
}  // namespace orvik::shell
