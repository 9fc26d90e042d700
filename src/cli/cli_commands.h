#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace orvik::cli {

// A command line that orvik-cli cannot carry out: exit status 2, with the
// text on standard error.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The subcommands. Each takes the arguments after its name, writes its
// answer to standard output and returns the exit status; a usage error
// throws UsageError.
int RunCommand(const std::vector<std::string>& args);
int SelectCommand(const std::vector<std::string>& args);
int CalcCommand(const std::vector<std::string>& args);
int DialogsCommand(const std::vector<std::string>& args);

// The text of `orvik-cli --help`.
std::string HelpText();

}  // namespace orvik::cli
