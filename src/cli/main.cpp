// orvik-cli: the headless runner of Orvik 2.0 commands.
#include <malloc.h>

#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include "cli/cli_commands.h"
#include "cli/history_replay.h"
#include "commands/command_registry.h"

namespace {

int KeysCommand() {
  for (const auto& command : orvik::commands::Commands()) {
    const char* state = command.scope == orvik::shell::CommandScope::Window ? "window only"
                        : command.run != nullptr                           ? "available"
                                                                           : "not available yet";
    std::cout << command.key << "\t" << command.menu << "\t" << state << "\n";
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  // A command over a million values makes and frees buffers of many
  // megabytes; kept in the heap rather than handed back to the system
  // each time, they are reused without faulting in fresh pages.
  mallopt(M_MMAP_THRESHOLD, 512 * 1024 * 1024);
  mallopt(M_TRIM_THRESHOLD, 512 * 1024 * 1024);
  const std::vector<std::string> args(argv + 1, argv + argc);
  if (args.empty() || args[0] == "--help" || args[0] == "-h" || args[0] == "help") {
    std::cout << orvik::cli::HelpText();
    return args.empty() ? 2 : 0;
  }
  const std::vector<std::string> rest(args.begin() + 1, args.end());
  try {
    if (args[0] == "run") return orvik::cli::RunCommand(rest);
    if (args[0] == "select") return orvik::cli::SelectCommand(rest);
    if (args[0] == "calc") return orvik::cli::CalcCommand(rest);
    if (args[0] == "dialogs") return orvik::cli::DialogsCommand(rest);
    if (args[0] == "keys") return KeysCommand();
    if (args[0] == "replay") return orvik::cli::ReplayCommand(rest);
    throw orvik::cli::UsageError("unknown command: " + args[0] + " (see orvik-cli --help)");
  } catch (const orvik::cli::UsageError& error) {
    std::cerr << "orvik-cli: " << error.what() << "\n";
    return 2;
  }
}
