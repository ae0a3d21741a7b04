// Whole lives of the published classes, and of the second front door, on any model and any
// snapshot.
//
// An input is a text in six sections, each ended by a line "--": dictionary, idf, model,
// model.conf, a snapshot, and rules, one a line: an id, a blank and a sentence. The sentences are
// also what is matched.
#include <cmath>
#include <limits>
#include <new>
#include <sstream>
#include <stdexcept>

#include <fennel/stemmer.hpp>
#include <velmora/app-model.hpp>
#include <velmora/dictionary.hpp>
#include <velmora/error.hpp>
#include <velmora/evaluation.hpp>
#include <velmora/frequencies.hpp>
#include <velmora/lint.hpp>
#include <velmora/matcher.hpp>
#include <velmora/topic-model.hpp>
#include <velmora/updater.hpp>
#include <velmora/velmora.hpp>
#include <velmora/wordsense-model.hpp>

#include "support.hpp"

namespace fuzz {

using namespace VX::Dialog;

namespace {

const std::string kRoot = "data/dialog/velmora/data/enu/model/";
const std::string kSnapshot = "saved";
constexpr std::size_t kMostRules = 20;

struct Life {
  test::Rules rules;
  test::Lines sentences;
};

// Writes the files of the input where an installed model is found.
Life begin_life(const Sections& sections) {
  [[maybe_unused]] static const bool is_first = (test::use_installed_data(folder()), true);
  const char* const names[] = {"dictionary", "idf", "model", "model.conf", kSnapshot.c_str()};
  for (std::size_t file = 0; file != std::size(names); ++file) {
    folder().write(kRoot + names[file], sections[file]);
  }
  Life life;
  test::Lines lines = lines_of(sections.back());
  lines.resize(std::min(lines.size(), kMostRules));
  for (const std::string& line : lines) {
    std::istringstream in(line);
    int rule_id = 0;
    in >> rule_id;
    std::string sentence;
    std::getline(in, sentence);
    life.rules[rule_id].push_back(sentence);
    life.sentences.push_back(sentence);
  }
  life.sentences.resize(std::min<std::size_t>(life.sentences.size(), 3));
  return life;
}

template <typename Entry>
void require_ranking(const std::vector<Entry>& matches) {
  for (std::size_t i = 1; i < matches.size(); ++i) {
    require(!(matches[i].first >= matches[i - 1].first), "scores fall");
  }
}

// What a life may end with: the documented exceptions.
template <typename Body>
void live(Body body) {
  try {
    body();
  } catch (const std::out_of_range&) {
    // No rule has a vector, or a rule's row is gone.
  } catch (const std::bad_alloc&) {
    // A header promises more than there is memory.
  }
}

void use(Velmora& engine, const Life& life) {
  std::string ignored;
  engine.activeAllRules(ignored);
  for (const std::string& sentence : life.sentences) {
    (void)engine.getSpecificities(sentence, ignored);
    (void)engine.simpleDist({sentence}, {"go", "light"}, ignored);
    live([&] {
      test::Matches matches;
      if (engine.matchInput(sentence, matches, ignored) == 1) {
        require_ranking(matches);
      } else {
        require(matches.empty(), "a refusal leaves the matches alone");
      }
    });
  }
  engine.updateDeactiveRules({life.rules.empty() ? 0 : life.rules.begin()->first}, ignored);
  live([&] {
    test::Matches matches;
    (void)engine.matchInput("go to the light", matches, ignored);
  });
  (void)engine.loadWordDistIndex(ignored);
}

void live_as_velmora(const Life& life) {
  std::string ignored;
  for (const bool compiles_new_rules : {false, true}) {
    live([&] {
      Velmora engine;
      std::string base = folder().path("nowhere");
      std::string language = "enu";
      require(engine.setModel(base, language), "the model is found");
      (void)engine.loadDialogVectorsFromFile(kSnapshot, life.rules, ignored, compiles_new_rules);
      use(engine, life);
    });
  }
  live([&] {
    Velmora engine;
    std::string base = folder().path("nowhere");
    std::string language = "enu";
    require(engine.setModel(base, language), "the model is found");
    require(engine.loadDialogVectors(ignored, life.rules), "rules are compiled");
    use(engine, life);
  });
}

void live_as_others(const Life& life) {
  live([&] {
    TopicModel topics("enu", life.rules);
    for (const std::string& sentence : life.sentences) {
      test::Matches matches;
      std::string ignored;
      (void)topics.matchInput(sentence, matches, ignored);
      require_ranking(matches);
    }
  });
  live([&] {
    AppModel apps;
    std::map<std::string, std::vector<std::string>> applications;
    for (const auto& [rule_id, sentences] : life.rules) {
      applications[std::to_string(rule_id)] = sentences;
    }
    (void)apps.setModel(folder().path("nowhere"), "enu", applications);
    for (const std::string& sentence : life.sentences) {
      std::vector<std::pair<double, std::vector<std::string>>> matches;
      (void)apps.matchInput(sentence, matches, 0.1);
      require_ranking(matches);
    }
  });
  live([&] {
    wordsense_model model;
    (void)read_wordsense_model(folder().path(kRoot + "model"), model);
    const Eigen::MatrixXd gram =
        model.missing_weight * (model.word_factors * model.word_factors.transpose());
    std::string dictionary = folder().path(kRoot + "dictionary");
    std::string idf = folder().path(kRoot + "idf");
    Updater updater(get_word_ids(dictionary), {}, load_idf(idf), model, gram);
    Stemmer stemmer("enu");
    (void)updater.update_vector(life.sentences, &stemmer);
  });
}

void require_sum(const velmora::Explanation& explanation) {
  double sum = 0.0;
  double size = 1.0;
  for (const velmora::WordPair& pair : explanation.pairs) {
    sum += pair.total();
    size += std::abs(pair.total());
  }
  require(std::abs(sum - explanation.score) <= 1e-9 * size, "an explanation adds up to the score");
}

void use(const velmora::Matcher& matcher, const Life& life) {
  std::vector<velmora::Expectation> expectations;
  for (const std::string& sentence : life.sentences) {
    const velmora::Answer answer = matcher.match(sentence, {.top = 100});
    require(answer.matches.size() == matcher.rules().size(), "each rule has its score");
    for (std::size_t i = 0; i != answer.matches.size(); ++i) {
      require(std::isfinite(answer.matches[i].score), "a score is a number");
      require(i == 0 || answer.matches[i].score <= answer.matches[i - 1].score, "scores fall");
      require_sum(matcher.explain(sentence, answer.matches[i].id));
    }
    expectations.push_back({.sentence = sentence});
    expectations.push_back({.id = matcher.rules().front().id, .sentence = sentence});
  }
  (void)velmora::lint(matcher);
  const velmora::Evaluation evaluation = velmora::evaluate(matcher, expectations);
  require(evaluation.in_scope == life.sentences.size(), "each expectation counts");
}

}  // namespace

void lives(const std::string& input) {
  const Sections sections = sections_of(input, 6);
  if (is_small_model(sections[2], sections[3])) {
    const Life life = begin_life(sections);
    live_as_velmora(life);
    live_as_others(life);
  }
}

void matcher(const std::string& input) {
  const Sections sections = sections_of(input, 6);
  const Life life = begin_life(sections);
  std::vector<velmora::Rule> rules;
  for (const auto& [rule_id, sentences] : life.rules) {
    rules.push_back({.id = rule_id, .sentences = sentences});
  }
  try {
    const velmora::Model model = velmora::Model::installed("enu");
    require(model.dimension() > 0, "a model that is taken has dimensions");
    const velmora::Matcher matcher(model, rules);
    if (!rules.empty()) {
      use(matcher, life);
    }
  } catch (const velmora::Error& error) {
    require(std::string(error.what()).starts_with(folder().path()), "an error names its file");
  }
}

}  // namespace fuzz
