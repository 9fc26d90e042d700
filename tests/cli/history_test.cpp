// The record of a run and its orvik-cli line: the line reads back to the
// same command, selection and settings, and a replay draws the same window
// from the recorded data whatever the worksheet holds by then.
#include <gtest/gtest.h>

#include "charts/control_charts.h"
#include "cli/cell_range.h"
#include "cli/history_replay.h"
#include "commands/command_registry.h"
#include "shell/command_run.h"
#include "support/sheet_host.h"

namespace orvik::shell {
// Settings print as DIALOG.CONTROL=VALUE in failure messages.
inline void PrintTo(const ControlSetting& s, std::ostream* out) { *out << s.dialog << "." << s.control << "=" << s.value; }
}  // namespace orvik::shell

namespace orvik::cli {
namespace {

using testing_support::Block;
using testing_support::HostOver;

TEST(RunLineTest, ReadsBackThroughTheShellAndTheRangeParser) {
  const worksheet::GridSelection whole_columns{true, 2, 4, -1, -1}, whole_rows{true, -1, -1, 7, 3},
      everything{true, -1, -1, -1, -1}, dragged_back{true, 5, 1, 3, 1}, one_cell{true, 2, 2, 2, 2}, none{};
  const struct {
    worksheet::GridSelection selection;
    std::string range;
  } cases[] = {{whole_columns, "B:D"}, {whole_rows, "7:3"},  {everything, "all"},
               {dragged_back, "E3:A1"}, {one_cell, "B2"}, {none, ""}};
  for (const auto& c : cases) {
    shell::CommandRun run{"mnuPCR", nullptr, c.selection,
                          {{"CpkForm", "Uppertxt", "25.015"}, {"CpkForm", "Lowertxt", "it's \"odd\" text"}}};
    const std::string line = shell::RunLine(run, "/tmp/my data/sheet 1.csv");
    SCOPED_TRACE(line);
    std::vector<std::string> words = ShellWords(line);
    std::vector<std::string> expected = {"orvik-cli", "run", "mnuPCR", "--sheet", "/tmp/my data/sheet 1.csv"};
    if (!c.range.empty()) expected.insert(expected.end(), {"--select", c.range});
    expected.insert(expected.end(), {"--set", "CpkForm.Uppertxt=25.015", "--set", "CpkForm.Lowertxt=it's \"odd\" text"});
    EXPECT_EQ(words, expected);
    if (!c.range.empty()) {
      const auto parsed = ParseCellRange(c.range);
      ASSERT_TRUE(parsed);
      EXPECT_EQ(std::tuple(parsed->SelBlockCol, parsed->SelBlockCol2, parsed->SelBlockRow, parsed->SelBlockRow2),
                std::tuple(c.selection.SelBlockCol, c.selection.SelBlockCol2, c.selection.SelBlockRow,
                           c.selection.SelBlockRow2));
    }
  }
  EXPECT_THROW(ShellWords("run 'open"), std::invalid_argument);
  EXPECT_EQ(ShellWords(R"(a\ b "c\"d" '')"), (std::vector<std::string>{"a b", "c\"d", ""}));
}

TEST(RunLineTest, LeavesOutWhatAFreshDialogHasAlready) {
  const auto fresh = [](const std::string& name) {
    const shell::DialogDeclaration* declared = commands::FindDialog(name);
    return declared ? declared->make() : nullptr;
  };
  auto form = fresh("CpkForm");
  form->Type("Uppertxt", "25.015");
  form->Click("SubYes");
  form->Type("Subsize", "5");
  const auto kept = shell::WithoutDefaults(shell::ControlStates(*form), fresh);
  // The chosen option first, then the texts typed; a box left alone is not
  // typed into (an empty one would read as typed and become "0").
  EXPECT_EQ(kept, (std::vector<shell::ControlSetting>{
                      {"CpkForm", "SubYes", "1"}, {"CpkForm", "Uppertxt", "25.015"}, {"CpkForm", "Subsize", "5"}}));
  // Applied to a fresh dialog, as orvik-cli applies --set, they give the same state.
  auto again = fresh("CpkForm");
  for (const auto& setting : kept) shell::ApplyControlSetting(*again, setting);
  EXPECT_EQ(shell::ControlStates(*again), shell::ControlStates(*form));
}

TEST(ReplayTest, DrawsTheSameChartFromTheRecordedDataAndAnswers) {
  testing_support::SheetRows rows;
  for (int r = 0; r < 12; ++r)
    rows.push_back({std::to_string(10 + r % 4), std::to_string(11 + r % 3), std::to_string(9 + r % 5)});
  auto host = HostOver(rows, Block(1, 1, 3, 12));
  host.BeginRun("mnuBarX-R");
  charts::XbarRView(host);
  const shell::CommandRun run = host.EndRun();
  ASSERT_EQ(host.Windows().size(), 1u);
  ASSERT_NE(host.Windows()[0].run, nullptr);
  EXPECT_EQ(host.Windows()[0].run->key, "mnuBarX-R");

  // A second run over the unchanged sheet shares the first run's copy.
  host.BeginRun("mnuBarX");
  EXPECT_EQ(host.EndRun().data, run.data);

  // The sheet changes and another block is selected; the replay reads the
  // recorded copy with the recorded selection and subgroup choice.
  host.ActiveWorksheet()->SetText(1, 1, "500");
  host.BeginRun("mnuBarX");
  EXPECT_NE(host.EndRun().data, run.data);
  host.ActiveWorksheet()->Selection = Block(2, 2, 2, 3);
  host.Replay(run, charts::XbarRView);
  ASSERT_EQ(host.Windows().size(), 2u);
  EXPECT_EQ(host.Windows()[1].table->TextRows(), host.Windows()[0].table->TextRows());
  EXPECT_EQ(host.ActiveWorksheet()->Text(1, 1), "500");  // the sheet itself is left as it was
  EXPECT_EQ(host.Windows()[1].run->settings, run.settings);
}

}  // namespace
}  // namespace orvik::cli
