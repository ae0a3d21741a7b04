// `velmora match --published`: the same sentences through the published classes, to see what a host
// that uses them gets. Tested by tools/velmora/tests/published-test.cpp.
#include <iostream>
#include <memory>
#include <stdexcept>

#include <velmora/app-model.hpp>
#include <velmora/velmora.hpp>
#include <zu/log.hpp>

#include "command-line.hpp"
#include "id-list.hpp"
#include "kept-snapshot.hpp"
#include "known-words.hpp"
#include "messages.hpp"
#include "session.hpp"
#include "table-file.hpp"

namespace {

using VX::Dialog::AppModel;
using VX::Dialog::Velmora;
using RuleTable = std::map<int, std::vector<std::string>>;
using AppTable = std::map<std::string, std::vector<std::string>>;

/// A rule that holds no known word would match as if it were the first rule, so it is left out.
template <typename Key>
void drop_unknown(std::map<Key, std::vector<std::string>>& table, const velmora::Model& model,
                  const std::string& what) {
  constexpr std::size_t kShown = 10;
  const std::vector<Key> removed = remove_unknown(table, model);
  for (std::size_t i = 0; i != std::min(removed.size(), kShown); ++i) {
    std::cerr << "velmora: warning: " << what << " " << removed[i]
              << " has no word that the model knows and is left out\n";
  }
  if (removed.size() > kShown) {
    warn("... and " + std::to_string(removed.size() - kShown) + " more");
  }
  if (table.empty()) {
    throw std::runtime_error("the model knows no word of any " + what);
  }
}

/// What a session of either kind shares.
struct Common {
  velmora::Model model;

  explicit Common(const DialogueOptions& options) : model(open_model(options)) {}

  /// A ranking without rules. Nothing is known of a sentence when the scores say nothing.
  Ranking start(const std::string& sentence, bool& known) {
    Ranking ranking;
    ranking.sentence = sentence;
    for (const std::string& stem : model.stems(sentence)) {
      if (!model.knows(stem)) {
        ranking.unknown.push_back(stem);
      }
    }
    known = !known_stems(model, sentence).empty();
    return ranking;
  }
};

/// Appends the rules of a score group, as far as there is room.
template <typename Ids, typename ToSentence>
void append_group(Ranking& ranking, const MatchSettings& settings, double score, const Ids& ids,
                  const ToSentence& to_sentence) {
  for (const auto& id : ids) {
    if (static_cast<int>(ranking.rules.size()) == settings.top) {
      return;
    }
    ranking.rules.push_back({score, id, to_sentence(id)});
  }
}

RuleTable read_rule_table(const std::string& path) {
  RuleTable table;
  for (const velmora::Rule& rule : velmora::read_rules(path)) {
    table[rule.id] = rule.sentences;
  }
  return table;
}

struct RuleMatcher {
  Velmora engine;
  RuleTable rules;
  std::set<int> rule_ids;

  void activate(const std::string& list) {
    std::string unused;
    engine.updateDeactiveRules(rule_ids, unused);
    engine.updateActiveRules(pick_ids(list, rule_ids), unused);
  }

  Ranking rank(Ranking ranking, const MatchSettings& settings) {
    std::vector<std::pair<double, std::vector<int>>> matches;
    std::string unused;
    if (engine.matchInput(ranking.sentence, matches, unused) != 1) {
      throw std::runtime_error("matching is not possible: no rule is active");
    }
    for (const auto& [score, ids] : matches) {
      if (settings.threshold && !(score >= *settings.threshold)) {
        break;
      }
      append_group(ranking, settings, score, ids, [&](int id) { return rules.at(id).front(); });
    }
    return ranking;
  }
};

void load_model(Velmora& engine, const PublishedModel& model, std::string language) {
  std::string base = model.base();
  if (!engine.setModel(base, language)) {
    throw std::runtime_error("the model could not be loaded");
  }
}

Session rule_session(const MatchSettings& settings) {
  auto common = std::make_shared<Common>(settings.dialogue);
  auto matcher = std::make_shared<RuleMatcher>();
  matcher->rules = read_rule_table(settings.dialogue.rules);
  drop_unknown(matcher->rules, common->model, "rule");
  for (const auto& [id, sentences] : matcher->rules) {
    matcher->rule_ids.insert(id);
  }

  const PublishedModel model(common->model.directory(), settings.dialogue.language,
                             !settings.snapshot.empty());
  load_model(matcher->engine, model, settings.dialogue.language);
  if (settings.snapshot.empty()) {
    compile_rules(matcher->engine, matcher->rules);
  } else {
    start_from_snapshot(matcher->engine, matcher->rules, model,
                        common->model.directory() / settings.snapshot);
  }
  matcher->activate(settings.active.empty() ? "all" : settings.active);

  Session session;
  session.rank = [common, matcher](const std::string& sentence, const MatchSettings& now) {
    bool known = false;
    Ranking ranking = common->start(sentence, known);
    return known ? matcher->rank(std::move(ranking), now) : ranking;
  };
  session.activate = [matcher](const std::string& ids) { matcher->activate(ids); };
  return session;
}

Session app_session(const MatchSettings& settings) {
  auto common = std::make_shared<Common>(settings.dialogue);
  auto apps = std::make_shared<AppTable>();
  if (!read_named_sentences(settings.apps, "name", *apps)) {
    throw std::runtime_error("the applications can't be used");
  }
  drop_unknown(*apps, common->model, "application");
  const PublishedModel model(common->model.directory(), settings.dialogue.language);
  auto matcher = std::make_shared<AppModel>();
  if (!matcher->setModel(model.base(), settings.dialogue.language, *apps)) {
    throw std::runtime_error("the model could not be loaded");
  }

  Session session;
  session.rank = [common, matcher, apps](const std::string& sentence, const MatchSettings& now) {
    bool known = false;
    Ranking ranking = common->start(sentence, known);
    std::vector<std::pair<double, std::vector<std::string>>> matches;
    if (known) {
      matcher->matchInput(sentence, matches, now.threshold.value_or(0.0));
    }
    for (const auto& [score, names] : matches) {
      append_group(ranking, now, score, names,
                   [&](const std::string& name) { return apps->at(name).front(); });
    }
    return ranking;
  };
  return session;
}

}  // namespace

Session open_published_session(const MatchSettings& settings) {
  zu::log::setConsole(settings.verbose);
  return settings.apps.empty() ? rule_session(settings) : app_session(settings);
}
