// The contender that matches through velmora::Matcher.
#include <memory>
#include <set>
#include <utility>

#include <velmora/matcher.hpp>

#include "contenders.hpp"

namespace {

struct LabelledMatcher {
  velmora::Matcher matcher;
  std::vector<std::string> label_of;
};

velmora::Matcher build(velmora::Model model, const RuleSet& rules) {
  std::vector<velmora::Rule> plain;
  for (const auto& [rule_id, rule] : rules) {
    plain.push_back({rule_id, rule.sentences});
  }
  return velmora::Matcher(std::move(model), std::move(plain));
}

/// Groups of labels that were not met before, by equal scores.
void rank_labels(const LabelledMatcher& labelled, const std::string& sentence,
                 const GroupConsumer& consume) {
  velmora::MatchOptions options;
  options.top = labelled.label_of.size();
  const velmora::Answer answer = labelled.matcher.match(sentence, options);
  std::set<std::string> met;
  for (std::size_t begin = 0; begin != answer.matches.size();) {
    LabelGroup group{answer.matches[begin].score, {}};
    std::size_t end = begin;
    for (; end != answer.matches.size() && answer.matches[end].score == group.first; ++end) {
      const std::string& label =
          labelled.label_of[static_cast<std::size_t>(answer.matches[end].id)];
      if (met.insert(label).second) {
        group.second.push_back(label);
      }
    }
    if (!group.second.empty() && !consume(group)) {
      return;
    }
    begin = end;
  }
}

}  // namespace

Contender matcher_contender(const velmora::Model& model, const RuleSet& rules) {
  auto labelled = std::make_shared<LabelledMatcher>(LabelledMatcher{build(model, rules), {}});
  for (const auto& [rule_id, rule] : rules) {
    labelled->label_of.push_back(rule.label);
  }
  Contender contender;
  contender.name = "matcher";
  contender.rank = [labelled](const std::string& sentence, const GroupConsumer& consume) {
    rank_labels(*labelled, sentence, consume);
  };
  return contender;
}
