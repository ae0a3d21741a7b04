// velmora-console: reads sentences and shows which rules of a dialogue they mean.
//
// For whoever writes rules or judges a model; see --help. Tested by
// tools/console/tests/console-test.cpp and, on the bundled models, by
// tests/models/paraphrase-test.cpp.
#include <unistd.h>

#include <clocale>
#include <cstdlib>
#include <exception>
#include <functional>
#include <iostream>
#include <memory>
#include <stdexcept>

#include <velmora/app-model.hpp>
#include <velmora/velmora.hpp>
#include <zu/log.hpp>

#include "console-options.hpp"
#include "id-list.hpp"
#include "known-words.hpp"
#include "line-input.hpp"
#include "model-place.hpp"
#include "ranking-output.hpp"
#include "table-file.hpp"
#include "warm-start.hpp"

namespace {

using RuleTable = std::map<int, std::vector<std::string>>;
using AppTable = std::map<std::string, std::vector<std::string>>;

/// Ranks a sentence; at most `--top` entries.
using Matcher = std::function<std::vector<RankedRule>(const std::string& sentence)>;

/// A set-up that failed, after its reason was told on standard error, gives an empty matcher.
const Matcher kNoMatcher;

/// Appends one score group, as far as there is room.
template <typename Ids, typename ToRule>
void append_group(std::vector<RankedRule>& ranked, int top, const Ids& ids, const ToRule& to_rule) {
  for (const auto& rule_id : ids) {
    if (static_cast<int>(ranked.size()) == top) {
      return;
    }
    ranked.push_back(to_rule(rule_id));
  }
}

/// A rule that holds no known word would match as if it were the first rule, so it is left out.
template <typename Key>
bool drop_unknown(std::map<Key, std::vector<std::string>>& table, KnownWords& words,
                  const std::string& what) {
  for (const Key& key : remove_unknown(table, words)) {
    std::cerr << "warning: " << what << " " << key
              << " has no word that the model knows and is left out\n";
  }
  if (table.empty()) {
    std::cerr << "the model knows no word of any " << what << "\n";
  }
  return !table.empty();
}

Matcher rule_matcher(const ConsoleOptions& options, const ModelPlace& place, KnownWords& words) {
  RuleTable rules;
  if (!read_numbered_sentences(options.rules_path, rules)) {
    return kNoMatcher;
  }
  const std::set<int> picked = pick_ids(options.active, rules);
  if (!drop_unknown(rules, words, "rule")) {
    return kNoMatcher;
  }

  auto matcher = std::make_shared<VX::Dialog::Velmora>();
  std::string base = place.base;
  std::string language = options.language;
  std::string unused;
  if (!matcher->setModel(base, language)) {
    std::cerr << "the model in " << place.directory << " could not be loaded\n";
    return kNoMatcher;
  }
  const bool loaded = options.snapshot.empty()
                          ? matcher->loadDialogVectors(unused, rules)
                          : start_from_snapshot(*matcher, rules, place.directory, options.snapshot);
  if (!loaded) {
    return kNoMatcher;
  }
  if (options.active.empty()) {
    matcher->activeAllRules(unused);
  } else {
    std::set<int> active;
    for (const int rule_id : picked) {
      if (rules.count(rule_id) != 0) {
        active.insert(rule_id);
      }
    }
    matcher->updateActiveRules(active, unused);
  }

  return [matcher, rules, top = options.top](const std::string& sentence) {
    std::vector<std::pair<double, std::vector<int>>> matches;
    std::string ignored;
    if (matcher->matchInput(sentence, matches, ignored) != 1) {
      throw std::runtime_error("matching is not possible: no active rule, or a damaged model");
    }
    std::vector<RankedRule> ranked;
    for (const auto& [score, rule_ids] : matches) {
      append_group(ranked, top, rule_ids, [&, value = score](int rule_id) {
        return RankedRule{value, std::to_string(rule_id), rules.at(rule_id).front()};
      });
    }
    return ranked;
  };
}

Matcher app_matcher(const ConsoleOptions& options, const ModelPlace& place, KnownWords& words) {
  AppTable apps;
  if (!read_named_sentences(options.apps_path, "name", apps)) {
    return kNoMatcher;
  }
  if (!drop_unknown(apps, words, "application")) {
    return kNoMatcher;
  }

  auto model = std::make_shared<VX::Dialog::AppModel>();
  if (!model->setModel(place.base, options.language, apps)) {
    std::cerr << "the model in " << place.directory << " could not be loaded\n";
    return kNoMatcher;
  }
  return [model, apps, options](const std::string& sentence) {
    std::vector<std::pair<double, std::vector<std::string>>> matches;
    model->matchInput(sentence, matches, options.threshold);
    std::vector<RankedRule> ranked;
    for (const auto& [score, names] : matches) {
      append_group(ranked, options.top, names, [&, value = score](const std::string& name) {
        return RankedRule{value, name, apps.at(name).front()};
      });
    }
    return ranked;
  };
}

bool wants_colour() {
  const char* no_colour = std::getenv("NO_COLOR");
  return isatty(STDOUT_FILENO) != 0 && (no_colour == nullptr || *no_colour == '\0');
}

void answer_sentences(const ConsoleOptions& options, const Matcher& matcher, KnownWords& words) {
  const bool interactive = input_is_terminal();
  if (interactive && !options.json) {
    std::cout << "Type a sentence; Ctrl-D ends.\n";
  }
  Ranking ranking;
  while (read_sentence(ranking.sentence)) {
    if (ranking.sentence.find_first_not_of(" \t") == std::string::npos) {
      continue;
    }
    ranking.known = !words.of(ranking.sentence).empty();
    ranking.rules = ranking.known ? matcher(ranking.sentence) : std::vector<RankedRule>();
    if (options.json) {
      print_ranking_json(std::cout, ranking);
    } else {
      print_ranking(std::cout, ranking, !interactive, wants_colour());
    }
  }
}

int run(const ConsoleOptions& options) {
  ModelPlace place;
  if (!find_model(options.model, options.language, place)) {
    return 1;
  }
  KnownWords words(options.language, place.directory + "dictionary");
  const Matcher matcher = options.apps_path.empty() ? rule_matcher(options, place, words)
                                                    : app_matcher(options, place, words);
  if (!matcher) {
    return 1;
  }
  answer_sentences(options, matcher, words);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  std::setlocale(LC_CTYPE, "");
  ConsoleOptions options;
  if (const std::optional<int> status = read_options(argc, argv, options)) {
    return *status;
  }
  zu::log::setConsole(options.verbose);
  try {
    return run(options);
  } catch (const WrongUsage& wrong) {
    std::cerr << wrong.what() << "\n";
    return 2;
  } catch (const std::exception& failure) {
    std::cerr << "velmora-console: " << failure.what() << "\n";
    return 1;
  }
}
