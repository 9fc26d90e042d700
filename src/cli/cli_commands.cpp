#include "cli/cli_commands.h"

#include <charconv>
#include <cstdio>
#include <exception>
#include <iostream>
#include <set>

#include "cli/cell_range.h"
#include "cli/cli_host.h"
#include "cli/json_writer.h"
#include "cli/report.h"
#include "commands/command_registry.h"
#include "formats/workbook_file.h"
#include "shell/analysis_input.h"
#include "stats/calc_catalog.h"
#include "worksheet/cell_number.h"

namespace orvik::cli {

namespace {

enum class Format { Text, Json };

// The options shared by run and select.
struct CommandLine {
  std::string key;
  std::string sheet_path;
  std::optional<worksheet::GridSelection> selection;
  std::vector<DialogSetting> settings;
  std::set<std::string> cancelled_dialogs;
  Format format = Format::Text;
};

CommandLine ParseOptions(const std::vector<std::string>& args, bool takes_key, bool takes_dialogs) {
  CommandLine line;
  const auto value_of = [&args](std::size_t& i) -> const std::string& {
    if (i + 1 >= args.size()) throw UsageError(args[i] + " needs a value");
    return args[++i];
  };
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    if (arg == "--sheet") {
      line.sheet_path = value_of(i);
    } else if (arg == "--select") {
      const std::string& range = value_of(i);
      line.selection = ParseCellRange(range);
      if (!line.selection) throw UsageError("bad range: " + range);
      if (!worksheet::WithinGrid(*line.selection))
        throw UsageError("bad range: " + range + " lies beyond the grid (columns A to XFD, rows 1 to 16777216)");
    } else if (arg == "--format") {
      const std::string& format = value_of(i);
      if (format == "json") line.format = Format::Json;
      else if (format == "text") line.format = Format::Text;
      else throw UsageError("--format takes json or text, not " + format);
    } else if (takes_dialogs && arg == "--set") {
      const std::string& setting = value_of(i);
      const auto dot = setting.find('.');
      const auto equals = setting.find('=');
      if (dot == std::string::npos || equals == std::string::npos || equals < dot)
        throw UsageError("--set takes DIALOG.CONTROL=VALUE, not " + setting);
      line.settings.push_back(
          {setting.substr(0, dot), setting.substr(dot + 1, equals - dot - 1), setting.substr(equals + 1)});
    } else if (takes_dialogs && arg == "--cancel") {
      line.cancelled_dialogs.insert(value_of(i));
    } else if (takes_key && line.key.empty() && !arg.starts_with("--")) {
      line.key = arg;
    } else {
      throw UsageError("unknown argument: " + arg);
    }
  }
  return line;
}

// Checks every --set and --cancel against the dialogs of the application.
void CheckDialogNames(const CommandLine& line) {
  for (const auto& setting : line.settings) {
    const shell::DialogDeclaration* entry = commands::FindDialog(setting.dialog);
    if (entry == nullptr) throw UsageError("unknown dialog: " + setting.dialog);
    const auto dialog = entry->make();
    if (!dialog->HasControl(setting.control))
      throw UsageError("dialog " + setting.dialog + " has no control " + setting.control);
    const auto kind = dialog->Control(setting.control).kind;
    if ((kind == shell::ControlKind::OptionButton || kind == shell::ControlKind::CheckBox) &&
        setting.value != "0" && setting.value != "1")
      throw UsageError(setting.dialog + "." + setting.control + " takes 1 or 0");
    if (kind != shell::ControlKind::TextBox && kind != shell::ControlKind::OptionButton &&
        kind != shell::ControlKind::CheckBox)
      throw UsageError(setting.dialog + "." + setting.control + " cannot be set");
  }
  for (const auto& name : line.cancelled_dialogs)
    if (commands::FindDialog(name) == nullptr) throw UsageError("unknown dialog: " + name);
}

// The worksheet a fresh program shows: "WorkSheet 1", holding the file, and
// the notices its reading gives (shown as the window application shows them
// when it opens the file, before any command).
struct LoadedSheet {
  worksheet::Worksheet sheet{"WorkSheet 1"};
  std::vector<std::string> notices;
};

LoadedSheet LoadSheet(const CommandLine& line) {
  LoadedSheet loaded;
  if (!line.sheet_path.empty()) {
    try {
      loaded.notices = formats::ReadFirstSheet(line.sheet_path, loaded.sheet);
    } catch (const std::exception& error) {
      throw UsageError(error.what());
    }
  }
  if (line.selection) loaded.sheet.Selection = *line.selection;
  return loaded;
}

void Print(const std::string& text) { std::fwrite(text.data(), 1, text.size(), stdout); }

}  // namespace

int RunCommand(const std::vector<std::string>& args) {
  const CommandLine line = ParseOptions(args, true, true);
  if (line.key.empty()) throw UsageError("run needs a tool key");
  const shell::CommandDeclaration* command = commands::FindCommand(line.key);
  if (command == nullptr) throw UsageError("unknown tool key: " + line.key);
  if (command->scope == shell::CommandScope::Window)
    throw UsageError(line.key + " works on the windows of the application; run it in orvik");
  if (command->run == nullptr) throw UsageError(line.key + " is not available in this version");
  CheckDialogNames(line);

  LoadedSheet loaded = LoadSheet(line);
  CliHost host(std::move(loaded.sheet), line.settings, line.cancelled_dialogs);
  for (auto& notice : loaded.notices) host.Notify(std::move(notice));
  RunRecord record;
  try {
    if (RunDialogsBeforeCommand(host, line.settings, *command)) command->run(host);
    if (host.AnyDialogCancelled()) record.outcome = "cancelled";
    else if (host.Windows().empty() && !host.Messages().empty()) record.outcome = "refused";
    else record.outcome = "completed";
  } catch (const std::invalid_argument& error) {
    throw UsageError(error.what());  // a --set value the control cannot take
  } catch (const std::exception&) {
    record.outcome = "failed";
  }
  record.messages = host.Messages();
  record.log = host.Log().Text();
  record.windows = host.TakeWindows();
  if (line.format == Format::Json) WriteRunRecordJson(record, std::cout);
  else WriteRunRecordText(record, std::cout);
  std::cout.flush();
  return 0;
}

int SelectCommand(const std::vector<std::string>& args) {
  const CommandLine line = ParseOptions(args, false, false);
  if (line.sheet_path.empty()) throw UsageError("select needs --sheet FILE");
  LoadedSheet loaded = LoadSheet(line);
  CliHost host(std::move(loaded.sheet), {}, {});
  for (auto& notice : loaded.notices) host.Notify(std::move(notice));
  SelectRecord record;
  record.outcome = "refused";
  if (shell::ResolveDataBlock(host)) {
    const auto figures = shell::CollectNumericCells(host);
    if (figures) {
      if (auto refusal = worksheet::CommonDataChecks(*figures)) host.Refuse(*refusal);
      else record.outcome = "completed";
    }
    record.selection = host.CurrentSelection();
  }
  record.messages = host.Messages();
  Print(line.format == Format::Json ? SelectRecordJson(record) : SelectRecordText(record));
  return 0;
}

int CalcCommand(const std::vector<std::string>& args) {
  if (args.empty() || args[0] == "--help") {
    std::string help = "Usage: orvik-cli calc FUNCTION ARG...\n\nFunctions:\n";
    for (const auto& function : stats::CalcCatalog()) {
      std::string signature(function.name);
      for (const auto argument : function.arguments) signature += " " + std::string(argument);
      help += "  " + signature + std::string(signature.size() < 34 ? 34 - signature.size() : 1, ' ') +
              std::string(function.summary) + "\n";
    }
    Print(help);
    return args.empty() ? 2 : 0;
  }
  const stats::CalcFunction* function = stats::FindCalcFunction(args[0]);
  if (function == nullptr) throw UsageError("unknown function: " + args[0]);
  if (args.size() - 1 != function->arguments.size())
    throw UsageError(args[0] + " takes " + std::to_string(function->arguments.size()) + " arguments");
  std::vector<double> values;
  for (std::size_t i = 1; i < args.size(); ++i) {
    const auto number = worksheet::ParseCellNumber(args[i]);
    if (!number) throw UsageError("not a number: " + args[i]);
    values.push_back(*number);
  }
  double result = 0.0;
  try {
    result = function->call(values);
  } catch (const std::exception& error) {
    throw UsageError(args[0] + ": " + error.what());
  }
  char buffer[40];
  std::snprintf(buffer, sizeof buffer, "%.17g\n", result);
  Print(buffer);
  return 0;
}

int DialogsCommand(const std::vector<std::string>& args) {
  const CommandLine line = ParseOptions(args, false, false);
  if (line.format == Format::Json) {
    JsonWriter json;
    json.BeginArray();
    for (const auto& entry : commands::Dialogs()) {
      const auto dialog = entry.make();
      json.BeginObject().Field("name", dialog->Name()).Field("caption", dialog->Caption());
      json.Key("controls").BeginArray();
      for (const auto& control : dialog->Controls()) {
        json.BeginObject().Field("name", control.name).Field("kind", shell::ControlKindName(control.kind));
        if (control.kind == shell::ControlKind::TextBox) json.Field("default", control.text);
        else if (control.kind != shell::ControlKind::CommandButton) json.Field("default", control.checked ? "1" : "0");
        json.Key("enabled").Integer(control.enabled ? 1 : 0).EndObject();
      }
      json.EndArray().EndObject();
    }
    json.EndArray();
    Print(json.Text() + "\n");
    return 0;
  }
  std::string out;
  for (const auto& entry : commands::Dialogs()) {
    const auto dialog = entry.make();
    out += dialog->Name() + " (" + dialog->Caption() + ")\n";
    for (const auto& control : dialog->Controls()) {
      out += "  " + control.name + "  " + shell::ControlKindName(control.kind);
      if (control.kind == shell::ControlKind::TextBox) out += "  default \"" + control.text + "\"";
      else if (control.kind != shell::ControlKind::CommandButton) out += control.checked ? "  default 1" : "  default 0";
      if (!control.enabled) out += "  (disabled)";
      out += "\n";
    }
  }
  if (out.empty()) out = "No dialogs are built yet.\n";
  Print(out);
  return 0;
}

std::string HelpText() {
  return R"(orvik-cli: runs Orvik 2.0 commands without a window.

Usage:
  orvik-cli run KEY [--sheet FILE] [--select RANGE] [--set DIALOG.CONTROL=VALUE]...
                    [--cancel DIALOG] [--format json|text]
      Runs the command of tool key KEY (for example mnuHistogram) in a freshly
      started program whose one worksheet "WorkSheet 1" holds FILE, and prints
      the message boxes, the session log and the result windows.
  orvik-cli select --sheet FILE [--select RANGE] [--format json|text]
      Resolves the selected block and reads its numbers as every analysis does,
      then applies the common checks.
  orvik-cli calc FUNCTION ARG...
      Calls one function of the statistical library; `calc --help` lists them.
  orvik-cli dialogs [--format json|text]
      Lists every dialog with its controls, their kinds and defaults.
  orvik-cli keys
      Lists every tool key with its menu and whether orvik-cli can run it.
  orvik-cli replay HISTORY [--format json|text]
      Runs every `orvik-cli run ...` line of a history file saved from the
      History pane of Orvik, one after the other, printing each result.

FILE: .csv comma-separated; .tsv and .txt tab-separated. Every field is one
cell (RFC 4180 quotes removed); row 1 of the file is row 1 of the sheet.
An .xlsx (or .xls) workbook gives its first sheet, an .orv project its
first worksheet with its column header names.
RANGE: B2:D20 (a block; the first corner is where the drag began), D20:B2
(dragged right to left, bottom to top), B:D (whole columns), 3:7 (whole
rows), all (the whole sheet), B2 (one cell). Without --select no block is
selected.
--set DIALOG.CONTROL=VALUE: text boxes take VALUE as typed; option buttons
and check boxes take 1 or 0. Settings apply in order, then OK is pressed;
--cancel DIALOG presses cancel instead. Questions are answered OK.

Exit status: 0 whatever the command's outcome; 2 for a usage error (unknown
key or function, unreadable file, bad range, unknown dialog or control).
)";
}

}  // namespace orvik::cli
