#include "prompt.hpp"

#include <charconv>
#include <exception>
#include <iostream>
#include <sstream>

#include "command-line.hpp"
#include "line-input.hpp"
#include "standard-output.hpp"

namespace {

constexpr const char* kHelp =
    "  :why [ID]     why the best rule, or rule ID, got its score for the last sentence\n"
    "  :top N        show N rules\n"
    "  :active IDS   only these rules may match, for example 101,600-699; all: every rule\n"
    "  :reload       read the rules again\n"
    "  :help         this list\n"
    "  :quit         end (or Ctrl-D)\n"
    "Everything else is matched; put a blank before a sentence that is a command.\n";

struct Prompt {
  MatchSettings settings;
  Session session;
  std::string last_sentence;
  bool ended = false;
};

int to_number(const std::string& text, const char* what) {
  int number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end) {
    throw WrongUsage("'" + text + "' is not " + what);
  }
  return number;
}

void explain_last(Prompt& prompt, const std::string& argument) {
  if (!prompt.session.why) {
    throw WrongUsage("the published classes do not tell why");
  }
  if (prompt.last_sentence.empty()) {
    throw WrongUsage("type a sentence first");
  }
  const std::optional<int> rule_id =
      argument.empty() ? std::nullopt : std::optional<int>(to_number(argument, "a rule id"));
  prompt.session.why(std::cout, prompt.last_sentence, rule_id);
}

void set_top(Prompt& prompt, const std::string& argument) {
  const int top = to_number(argument, "a number of rules");
  if (top < 1) {
    throw WrongUsage("at least one rule is shown");
  }
  prompt.settings.top = top;
}

void set_active(Prompt& prompt, const std::string& argument) {
  if (!prompt.session.activate) {
    throw WrongUsage("applications are always active");
  }
  prompt.session.activate(argument);
  prompt.settings.active = argument;
}

/// `help`, `quit` and `exit` are what people try first.
std::string canonical_command(const std::string& line) {
  if (line == "help" || line == "quit" || line == "exit" || line == "?") {
    return line == "exit" ? ":quit" : line == "?" ? ":help" : ":" + line;
  }
  return line;
}

/// False when the line is a sentence.
bool run_command(Prompt& prompt, const std::string& line) {
  std::istringstream words(canonical_command(line));
  std::string name;
  std::string argument;
  words >> name;
  std::getline(words >> std::ws, argument);
  if (name.empty() || line.front() == ' ' || name.front() != ':') {
    return false;
  }
  if (name == ":why") {
    explain_last(prompt, argument);
  } else if (name == ":top") {
    set_top(prompt, argument);
  } else if (name == ":active") {
    set_active(prompt, argument);
  } else if (name == ":reload") {
    prompt.session = open_session(prompt.settings);
    std::cout << "read again\n";
  } else if (name == ":help") {
    std::cout << kHelp;
  } else if (name == ":quit") {
    prompt.ended = true;
  } else {
    throw WrongUsage("unknown command '" + name + "'; :help lists them");
  }
  return true;
}

void answer(Prompt& prompt, const std::string& line) {
  if (run_command(prompt, line)) {
    return;
  }
  prompt.last_sentence = line;
  print_ranking(std::cout, prompt.session.rank(line, prompt.settings), false, output_paint());
}

}  // namespace

void run_prompt(MatchSettings settings, Session session) {
  Prompt prompt{std::move(settings), std::move(session), "", false};
  std::cout << "Type a sentence, or :help.\n" << std::flush;
  std::string line;
  while (!prompt.ended && read_line(line)) {
    if (line.find_first_not_of(" \t") == std::string::npos) {
      continue;
    }
    try {
      answer(prompt, line);
    } catch (const std::exception& failure) {
      // The prompt goes on: with the rules of before when they could not be read again.
      std::cout << failure.what() << "\n";
    }
    flush_output();
  }
}
