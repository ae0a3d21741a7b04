// An engine led through any sequence of calls on any model, held against the exported chain of
// functions: what it compiles and what it matches is close to what the chain gives.
//
// An input is a script in five sections, each ended by a line "--": dictionary, idf, model,
// model.conf, and the calls, one a line: a letter and its arguments (see do_call).
#include <algorithm>
#include <array>
#include <sstream>
#include <stdexcept>

#include <velmora/similarity.hpp>

#include "engine/velmora-private.hpp"
#include "kit/exported-chain.hpp"
#include "support.hpp"
#include "support/model-files.hpp"

namespace fuzz {

using namespace VX::Dialog;

namespace {

constexpr std::size_t kMostCalls = 60;

void check_match(VelmoraPrivate& engine, const std::string& sentence) {
  test::Matches matches;
  if (!engine.fStemmer || engine.fVocab.empty() || engine.fModel.dim == 0 ||
      engine.fActive_rules.empty()) {
    require(engine.xMatchInput(sentence, matches) == -1 && matches.empty(),
            "nothing is matched before all is there");
    return;
  }
  std::map<int, int> rows = engine.fRuleRows;
  test::Matches expected;
  bool is_outside = false;
  try {
    expected = test::chain_matches(sentence, engine, rows);
  } catch (const std::out_of_range&) {
    is_outside = true;
  }
  try {
    require(engine.xMatchInput(sentence, matches) == 1, "matching runs");
    require(!is_outside, "a row outside the vectors is refused");
  } catch (const std::out_of_range&) {
    require(is_outside, "a row inside the vectors is not refused");
  }
  require(engine.fRuleRows == rows, "both add the same rows");
  if (test::has_near_ties(matches) || test::has_near_ties(expected)) {
    return;
  }
  require(matches.size() == expected.size(), "both have the same number of matches");
  for (std::size_t i = 0; i != matches.size(); ++i) {
    require(test::is_close(matches[i].first, expected[i].first), "both have the same score");
    require(matches[i].second == expected[i].second, "both have the same rules");
  }
}

void check_compilation(VelmoraPrivate& engine, test::Rules rules) {
  const std::size_t old_count = engine.fRuleVectors.size();
  std::map<int, int> rows = engine.fRuleRows;
  try {
    require(engine.xLoadDialogVectors(rules), "rules are compiled");
  } catch (const std::out_of_range&) {
    // The same as in a load, see do_call: only saving failed.
  }
  const test::Vectors vectors = test::chain_compilation(rules, engine, rows);
  require(engine.fRuleRows == rows, "both number the same rows");
  require(engine.fRuleVectors.size() == old_count + vectors.size(), "vectors are appended");
  for (std::size_t row = 0; row != vectors.size(); ++row) {
    require(test::are_close(engine.fRuleVectors[old_count + row], vectors[row]),
            "both have the same vector");
  }
}

void check_distance(VelmoraPrivate& engine, const std::string& text) {
  const std::size_t middle = std::min(text.find('|'), text.size());
  std::array<std::vector<std::string>, 2> words;
  std::istringstream first(text.substr(0, middle));
  std::istringstream second(text.substr(std::min(middle + 1, text.size())));
  for (std::string word; first >> word;) {
    words[0].push_back(word);
  }
  for (std::string word; second >> word;) {
    words[1].push_back(word);
  }
  const test::Vectors vectors = test::chain_vectors({{0, words[0]}, {1, words[1]}}, engine);
  require(test::is_close(engine.xSimpleDist(words[0], words[1]), cosine(vectors[0], vectors[1])),
          "both have the same distance");
}

std::set<int> ids_of(const std::string& text) {
  std::set<int> ids;
  std::istringstream in(text);
  for (int id = 0; in >> id;) {
    ids.insert(id);
  }
  return ids;
}

void do_call(VelmoraPrivate& engine, test::Rules& rules, char letter, const std::string& text) {
  std::set<int> ids;
  switch (letter) {
    case 'r': {  // a sentence for a rule of the next compilation or load: its id, then the text
      std::istringstream in(text);
      int rule_id = 0;
      in >> rule_id;
      std::getline(in, rules[rule_id].emplace_back());
      break;
    }
    case 'n':  // no rules
      rules.clear();
      break;
    case 'c':
      check_compilation(engine, rules);
      break;
    case 'i':  // index load of what was last compiled
    case 'm':  // merge load of the same
      try {
        (void)engine.xLoadDialogVectorsFromFile("newindex", rules, letter == 'm');
      } catch (const std::out_of_range&) {
        // A rule of an earlier load is the lowest of its row and is gone; documented.
      }
      break;
    case 'a':
      engine.xActiveAllRules();
      break;
    case 'u':
      ids = ids_of(text);
      engine.xUpdateActiveRules(ids);
      break;
    case 'd':
      ids = ids_of(text);
      engine.xUpdateDeactiveRules(ids);
      break;
    case 'q':
      check_match(engine, text);
      break;
    case 's':
      require(!engine.xSpecificities(text).empty(), "there is always a stem or the sentence");
      break;
    case 't':
      check_distance(engine, text);
      break;
    case 'w':
      require(engine.loadWordDists() == 1, "word distances are computed");
      break;
    case 'l':
      require(engine.xLoadSemanticModels(), "the model is read again");
      break;
    case '+':  // the small model of the tests in place of that of the script
      test::give_model(engine, folder());
      break;
    default:
      break;
  }
}

}  // namespace

void engine(const std::string& input) {
  const Sections sections = sections_of(input, 5);
  if (!is_small_model(sections[2], sections[3])) {
    return;
  }
  for (std::size_t file = 0; file != std::size(detail::kModelFiles); ++file) {
    folder().write(std::string("script/model/") + detail::kModelFiles[file], sections[file]);
  }
  folder().write("script/model/newindex", "");
  folder().write(test::kLanguage + "/model/newindex", "");
  VelmoraPrivate engine;
  std::string base = folder().path();
  std::string language = "script";
  require(engine.xSetModel(base, language), "the model is found");
  test::Rules rules;
  std::vector<std::string> calls = lines_of(sections.back());
  calls.resize(std::min(calls.size(), kMostCalls));
  for (const std::string& call : calls) {
    if (!call.empty()) {
      do_call(engine, rules, call.front(), call.substr(1));
    }
  }
}

}  // namespace fuzz
