// The stemmer of each language, and whole sentences through the public class.
#include <algorithm>

#include <fennel/stemmer.hpp>
#include <velmora/velmora.hpp>

#include "support.hpp"
#include "support/number-text.hpp"

namespace fuzz {

using namespace VX::Dialog;

namespace {

// Two stemmers of one language, of which one has always just seen another sentence.
struct Stemmers {
  explicit Stemmers(const char* language) : first(language), second(language) {}

  void check(const std::string& sentence) {
    std::vector<std::string> stems;
    first.stem_sentence(sentence, stems);
    for (const std::string& stem : stems) {
      require(!stem.empty(), "no stem is empty");
      require(std::none_of(stem.begin(), stem.end(), detail::is_white_space),
              "no stem holds white space");
    }
    std::vector<std::string> again = {"what", "was", "there"};
    second.stem_sentence("L'été, don't 12.5 \u98df\u3079\u305f", again);
    second.stem_sentence(sentence, again);
    require(stems == again, "stems depend on nothing but the sentence");
  }

  Stemmer first;
  Stemmer second;
};

}  // namespace

void stemmer_english(const std::string& input) {
  static Stemmers stemmers("enu");
  stemmers.check(input);
}

void stemmer_french(const std::string& input) {
  static Stemmers stemmers("frf");
  stemmers.check(input);
}

void stemmer_japanese(const std::string& input) {
  static Stemmers stemmers("jpj");
  stemmers.check(input);
}

void sentence(const std::string& input) {
  static std::string ignored;
  static Velmora& engine = []() -> Velmora& {
    test::write_model(folder(), "enu");
    auto& created = *new Velmora;
    std::string base = folder().path();
    std::string language = "enu";
    require(created.setModel(base, language), "the model is found");
    require(created.loadDialogVectors(ignored, {{1, {"go up"}}, {2, {"stop"}}, {7, {"walking"}}}),
            "the rules are compiled");
    created.activeAllRules(ignored);
    return created;
  }();
  test::Matches matches;
  require(engine.matchInput(input, matches, ignored) == 1, "matching runs");
  std::vector<int> rule_ids;
  for (std::size_t i = 0; i != matches.size(); ++i) {
    require(i == 0 || matches[i].first < matches[i - 1].first, "scores fall");
    require(matches[i].first >= -1.000001 && matches[i].first <= 1.000001, "scores are cosines");
    rule_ids.insert(rule_ids.end(), matches[i].second.begin(), matches[i].second.end());
  }
  std::sort(rule_ids.begin(), rule_ids.end());
  require(rule_ids == std::vector<int>{1, 2, 7}, "each rule has one score");
  test::Matches again;
  require(engine.matchInput(input, again, ignored) == 1 && again == matches,
          "the same sentence has the same scores");
}

}  // namespace fuzz
