#include "shell/session_log.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace orvik::shell {
namespace {

TEST(SessionLogTest, StartsWithTheWelcomeLineAndNoLineBreak) {
  SessionLog log;
  EXPECT_EQ(log.Text(), "Welcome to Orvik 2.0");
}

TEST(SessionLogTest, SeparatesEveryLineWithOneCarriageReturnLineFeed) {
  SessionLog log;
  log.AppendSessionLine("Histogram generation is starting");
  log.AppendSessionLine("Histogram generation is completed");
  EXPECT_EQ(log.Text(),
            "Welcome to Orvik 2.0\r\nHistogram generation is starting\r\nHistogram generation is completed");
}

TEST(SessionLogTest, TellsItsListenerEachNewLine) {
  SessionLog log;
  std::vector<std::string> seen;
  log.SetAppendListener([&seen](std::string_view line) { seen.emplace_back(line); });
  log.AppendSessionLine("WorkSheet 2 generation is completed");
  log.AppendSessionLine("");
  EXPECT_EQ(seen, (std::vector<std::string>{"WorkSheet 2 generation is completed", ""}));
  EXPECT_EQ(log.Text(), "Welcome to Orvik 2.0\r\nWorkSheet 2 generation is completed\r\n");
}

}  // namespace
}  // namespace orvik::shell
