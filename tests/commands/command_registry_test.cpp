#include "commands/command_registry.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

#include "charts/given_limits_dialog.h"
#include "cli/cell_range.h"
#include "cli/cli_host.h"
#include "formats/workbook_file.h"

namespace orvik::commands {
namespace {

using shell::CommandDeclaration;
using shell::CommandScope;

TEST(CommandRegistryTest, KeysAreUniqueAndFoundExactly) {
  std::set<std::string_view> keys;
  for (const CommandDeclaration& command : Commands()) {
    EXPECT_TRUE(keys.insert(command.key).second) << command.key << " twice";
    EXPECT_EQ(FindCommand(command.key), &command);
  }
  for (const char* unknown : {"mnubarx-r", "mnuBarX-R ", "mnuNoSuchKey", ""}) EXPECT_EQ(FindCommand(unknown), nullptr);
}

TEST(CommandRegistryTest, DialogsAreUniqueAndMakeDialogsOfTheirName) {
  std::set<std::string_view> names;
  for (const shell::DialogDeclaration& dialog : Dialogs()) {
    EXPECT_TRUE(names.insert(dialog.name).second) << dialog.name << " twice";
    EXPECT_EQ(dialog.make()->Name(), dialog.name);
    EXPECT_EQ(FindDialog(dialog.name), &dialog);
  }
  EXPECT_EQ(FindDialog("NoSuchForm"), nullptr);
}

TEST(CommandRegistryTest, EveryDialogACommandOpensIsDeclared) {
  for (const CommandDeclaration& command : Commands())
    for (const std::string_view name : command.dialogs) EXPECT_NE(FindDialog(name), nullptr) << command.key << ": " << name;
}

TEST(CommandRegistryTest, GivenLimitsBelongToControlChartsWithASetPerChart) {
  for (const CommandDeclaration& command : Commands()) {
    if (command.givenLimitSets == 0) continue;
    EXPECT_EQ(command.window, shell::WindowKind::ControlForm) << command.key;
    EXPECT_GE(command.givenLimitSets, 1) << command.key;
    EXPECT_LE(command.givenLimitSets, command.chartCount) << command.key;
    // The dialog the result window opens for the command holds its sets and
    // is applied before the command in a headless run.
    const shell::DialogDeclaration* dialog = FindDialog(command.givenLimitSets == 1 ? "ControlLimit" : "ControlTwoLimit");
    ASSERT_NE(dialog, nullptr) << command.key;
    EXPECT_TRUE(dialog->opensBeforeCommand);
    const auto made = dialog->make();
    const auto* limits = dynamic_cast<const charts::GivenLimitsDialog*>(made.get());
    ASSERT_NE(limits, nullptr) << dialog->name;
    EXPECT_EQ(limits->ChartCount(), command.givenLimitSets);
  }
}

TEST(CommandRegistryTest, WindowCommandsNeedNoCoreProcedureAndOpenNoResultWindow) {
  for (const CommandDeclaration& command : Commands()) {
    if (command.scope != CommandScope::Window) continue;
    EXPECT_EQ(command.run, nullptr) << command.key;
    EXPECT_FALSE(command.window.has_value()) << command.key;
    EXPECT_TRUE(command.dialogs.empty()) << command.key;
  }
}

// A headless host that notes the name of every dialog it is shown.
class RecordingHost : public cli::CliHost {
 public:
  using cli::CliHost::CliHost;
  std::vector<std::string> opened;

 protected:
  shell::DialogOutcome ShowDialog(shell::DialogModel& dialog) override {
    opened.emplace_back(dialog.Name());
    return cli::CliHost::ShowDialog(dialog);
  }
};

TEST(DeclaredWindowsTest, CommandsOpenTheDialogsAndTheWindowTheyDeclare) {
  const char* source = std::getenv("ORVIK_SOURCE_DIR");
  ASSERT_NE(source, nullptr);
  std::ifstream cases(std::string(source) + "/tests/commands/declared_windows.txt");
  ASSERT_TRUE(cases.good());
  std::set<std::string> checked;
  for (std::string line; std::getline(cases, line);) {
    if (line.empty() || line.front() == '#') continue;
    std::istringstream words(line);
    std::string key, sheet_name, range, setting;
    words >> key >> sheet_name >> range;
    std::vector<cli::DialogSetting> settings;
    while (words >> setting) {
      const auto dot = setting.find('.'), equals = setting.find('=');
      settings.push_back({setting.substr(0, dot), setting.substr(dot + 1, equals - dot - 1), setting.substr(equals + 1)});
    }
    SCOPED_TRACE(line);
    const CommandDeclaration* command = FindCommand(key);
    ASSERT_NE(command, nullptr);
    ASSERT_NE(command->run, nullptr);
    worksheet::Worksheet sheet("WorkSheet 1");
    if (sheet_name != "-") formats::ReadFirstSheet(std::string(source) + "/examples/" + sheet_name, sheet);
    if (range != "-") sheet.Selection = *cli::ParseCellRange(range);
    RecordingHost host(std::move(sheet), settings, {});
    command->run(host);

    EXPECT_EQ(host.opened, std::vector<std::string>(command->dialogs.begin(), command->dialogs.end()));
    ASSERT_EQ(host.Windows().size(), 1u) << (host.Messages().empty() ? "" : host.Messages().front().text);
    const shell::ResultWindow& window = host.Windows().front();
    EXPECT_EQ(command->window, window.kind);
    EXPECT_EQ(static_cast<std::size_t>(command->chartCount), window.charts.size());
    if (window.kind == shell::WindowKind::ControlForm) {
      EXPECT_EQ(window.commandKey, key);
    }
    checked.insert(key);
  }
  EXPECT_FALSE(checked.empty());
}

}  // namespace
}  // namespace orvik::commands
