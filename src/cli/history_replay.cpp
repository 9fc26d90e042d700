#include "cli/history_replay.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "cli/cli_commands.h"

namespace orvik::cli {

std::vector<std::string> ShellWords(std::string_view line) {
  std::vector<std::string> words;
  std::string word;
  bool in_word = false;
  for (std::size_t i = 0; i < line.size(); ++i) {
    const char c = line[i];
    if (c == ' ' || c == '\t' || c == '\r') {
      if (in_word) words.push_back(std::move(word)), word.clear();
      in_word = false;
      continue;
    }
    in_word = true;
    if (c == '\'') {
      const std::size_t end = line.find('\'', i + 1);
      if (end == std::string_view::npos) throw std::invalid_argument("unclosed ' quote");
      word.append(line.substr(i + 1, end - i - 1));
      i = end;
    } else if (c == '"') {
      for (++i; i < line.size() && line[i] != '"'; ++i) {
        if (line[i] == '\\' && i + 1 < line.size() && (line[i + 1] == '"' || line[i + 1] == '\\')) ++i;
        word += line[i];
      }
      if (i >= line.size()) throw std::invalid_argument("unclosed \" quote");
    } else if (c == '\\' && i + 1 < line.size()) {
      word += line[++i];
    } else {
      word += c;
    }
  }
  if (in_word) words.push_back(std::move(word));
  return words;
}

int ReplayCommand(const std::vector<std::string>& args) {
  std::string path, format;
  for (std::size_t i = 0; i < args.size(); ++i) {
    if (args[i] == "--format" && i + 1 < args.size()) format = args[++i];
    else if (path.empty() && !args[i].starts_with("--")) path = args[i];
    else throw UsageError("unknown argument: " + args[i]);
  }
  if (path.empty()) throw UsageError("replay needs a history file");
  std::ifstream in(path);
  if (!in) throw UsageError("cannot read " + path);
  // Every line is checked before any runs, so a bad file runs nothing.
  std::vector<std::vector<std::string>> runs;
  std::string line;
  for (long number = 1; std::getline(in, line); ++number) {
    std::vector<std::string> words;
    try {
      words = ShellWords(line);
    } catch (const std::invalid_argument& error) {
      throw UsageError(path + ":" + std::to_string(number) + ": " + error.what());
    }
    if (words.empty() || words.front().starts_with("#")) continue;
    if (words.size() < 2 || !words[0].ends_with("orvik-cli") || words[1] != "run")
      throw UsageError(path + ":" + std::to_string(number) + ": not an orvik-cli run line");
    std::vector<std::string> run(words.begin() + 2, words.end());
    const bool has_format = std::find(run.begin(), run.end(), "--format") != run.end();
    if (!format.empty() && !has_format) run.insert(run.end(), {"--format", format});
    runs.push_back(std::move(run));
  }
  for (const auto& run : runs) RunCommand(run);
  return 0;
}

}  // namespace orvik::cli
