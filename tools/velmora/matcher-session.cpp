// `velmora match` through velmora::Matcher. Tested by tools/velmora/tests/commands-test.cpp.
#include <memory>
#include <optional>

#include "explanation-output.hpp"
#include "id-list.hpp"
#include "session.hpp"

namespace {

struct MatcherState {
  velmora::Matcher matcher;
  std::set<int> rule_ids;
  std::optional<velmora::ActiveRules> active;

  explicit MatcherState(const DialogueOptions& options) : matcher(open_matcher(options)) {
    for (const velmora::Rule& rule : matcher.rules()) {
      rule_ids.insert(rule.id);
    }
  }

  void activate(const std::string& list) {
    const std::set<int> ids = pick_ids(list, rule_ids);
    active = matcher.activate({ids.begin(), ids.end()});
  }

  velmora::Answer match(const std::string& sentence, const MatchSettings& settings) const {
    velmora::MatchOptions options;
    options.top = static_cast<std::size_t>(settings.top);
    if (settings.threshold) {
      options.threshold = *settings.threshold;
    }
    options.active = active ? &*active : nullptr;
    return matcher.match(sentence, options);
  }
};

Ranking to_ranking(const velmora::Matcher& matcher, const std::string& sentence,
                   velmora::Answer answer) {
  Ranking ranking;
  ranking.sentence = sentence;
  ranking.unknown = std::move(answer.unknown);
  for (const velmora::Match& match : answer.matches) {
    ranking.rules.push_back(
        {match.score, match.id, matcher.find(match.id)->sentences[match.sentence]});
  }
  return ranking;
}

void explain(const MatcherState& state, std::ostream& out, const std::string& sentence,
             std::optional<int> rule_id) {
  if (!rule_id) {
    const velmora::Answer answer = state.match(sentence, {});
    if (answer.matches.empty()) {
      out << "nothing matches\n";
      return;
    }
    rule_id = answer.matches.front().id;
  }
  print_explanation(
      out, state.matcher,
      state.matcher.explain(sentence, *rule_id, state.active ? &*state.active : nullptr));
}

}  // namespace

Session open_matcher_session(const MatchSettings& settings) {
  auto state = std::make_shared<MatcherState>(settings.dialogue);
  if (!settings.active.empty()) {
    state->activate(settings.active);
  }
  Session session;
  session.rank = [state](const std::string& sentence, const MatchSettings& now) {
    return to_ranking(state->matcher, sentence, state->match(sentence, now));
  };
  session.activate = [state](const std::string& ids) { state->activate(ids); };
  session.why = [state](std::ostream& out, const std::string& sentence,
                        std::optional<int> rule_id) { explain(*state, out, sentence, rule_id); };
  return session;
}
