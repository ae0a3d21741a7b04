#include "workbench.hpp"

#include <algorithm>
#include <cmath>
#include <functional>
#include <optional>
#include <sstream>
#include <string_view>
#include <utility>
#include <vector>

#include <Eigen/Core>
#include <nlohmann/json.hpp>

#include <velmora/error.hpp>
#include <velmora/evaluation.hpp>
#include <velmora/lint.hpp>

#include "closeness.hpp"
#include "sentence-map.hpp"

namespace serve {

namespace {

using nlohmann::json;
namespace fs = std::filesystem;

constexpr auto kBetweenLooks = std::chrono::seconds(1);
// The map and the closeness take time and a page that grow with the square of the dialogue; of a
// larger one they show the first so many.
constexpr std::size_t kMostSentencesOnMap = 3000;
constexpr std::size_t kMostRulesInGrid = 150;
constexpr std::size_t kMostPairs = 200;

/// What tells a file from what it was before.
struct FileStamp {
  fs::file_time_type written;
  std::uintmax_t size = 0;

  bool operator==(const FileStamp&) const = default;
};

FileStamp stamp_of(const fs::path& path) {
  std::error_code
      gone;  // a file that is gone for a moment, as editors leave it, is a change like any other
  FileStamp stamp;
  stamp.written = fs::last_write_time(path, gone);
  stamp.size = fs::file_size(path, gone);
  return stamp;
}

std::vector<FileStamp> stamps_of(const DialogueFiles& files) {
  std::vector<FileStamp> stamps = {stamp_of(files.rules)};
  if (files.expectations) {
    stamps.push_back(stamp_of(*files.expectations));
  }
  return stamps;
}

/// Something that is computed once, when it is first asked for.
class Lazy {
 public:
  const json& get(const std::function<json()>& compute) {
    std::call_once(once_, [&] { value_ = compute(); });
    return *value_;
  }

 private:
  std::once_flag once_;
  std::optional<json> value_;
};

Eigen::VectorXd latent_vector(const velmora::Model& model, const std::string& sentence) {
  const std::vector<double> values = model.vector(sentence);
  return Eigen::Map<const Eigen::VectorXd>(values.data(), static_cast<Eigen::Index>(values.size()));
}

/// The first sentences of a dialogue with their latent vectors.
struct SentenceVectors {
  std::vector<const velmora::Rule*> rules;      ///< those with a column
  std::vector<std::size_t> rule_of_column;      ///< index into `rules`
  std::vector<std::size_t> sentence_of_column;  ///< index into the sentences of the rule
  Eigen::MatrixXd vectors;                      ///< D x n

  const std::string& text(std::size_t column) const {
    return rules[rule_of_column[column]]->sentences[sentence_of_column[column]];
  }
};

SentenceVectors vectors_of(const velmora::Matcher& matcher) {
  SentenceVectors sentences;
  for (const velmora::Rule& rule : matcher.rules()) {
    if (sentences.rule_of_column.size() + rule.sentences.size() > kMostSentencesOnMap) {
      break;
    }
    for (std::size_t sentence = 0; sentence != rule.sentences.size(); ++sentence) {
      sentences.rule_of_column.push_back(sentences.rules.size());
      sentences.sentence_of_column.push_back(sentence);
    }
    sentences.rules.push_back(&rule);
  }
  sentences.vectors.resize(static_cast<Eigen::Index>(matcher.model().dimension()),
                           static_cast<Eigen::Index>(sentences.rule_of_column.size()));
  for (std::size_t column = 0; column != sentences.rule_of_column.size(); ++column) {
    sentences.vectors.col(static_cast<Eigen::Index>(column)) =
        latent_vector(matcher.model(), sentences.text(column));
  }
  return sentences;
}

json to_json(const std::optional<Point>& point) {
  return point ? json{{"x", point->x}, {"y", point->y}} : json(nullptr);
}

json to_json(const velmora::Rule& rule) {
  return {{"id", rule.id}, {"text", rule.sentences.front()}};
}

const std::string& sentence_text(const velmora::Matcher& matcher, int id, std::size_t sentence) {
  return matcher.find(id)->sentences[sentence];
}

bool contains(const std::vector<std::string>& sorted, const std::string& stem) {
  return std::binary_search(sorted.begin(), sorted.end(), stem);
}

// The sentence word by word, each with whether it is known. A word of several stems, as a sentence
// without blanks is one, stays when some are known, and those that are not come behind it.
json marked_words(const velmora::Model& model, const std::string& sentence,
                  const std::vector<std::string>& unknown) {
  json words = json::array();
  std::istringstream rest(sentence);
  for (std::string word; rest >> word;) {
    std::vector<std::string> missing = model.stems(word);
    const std::size_t count = missing.size();
    std::erase_if(missing, [&](const std::string& stem) { return !contains(unknown, stem); });
    const bool known = missing.empty() || missing.size() != count;
    words.push_back({{"text", word}, {"known", known}});
    for (const std::string& stem : missing) {
      if (known) {
        words.push_back({{"text", stem}, {"known", false}});
      }
    }
  }
  return words;
}

// Every pair of rules, closest first, at most kMostPairs.
json closest_pairs(const SentenceVectors& sentences, const Eigen::MatrixXd& closeness) {
  struct Pair {
    double cosine;
    std::size_t first;
    std::size_t second;
  };
  std::vector<Pair> pairs;
  for (std::size_t first = 0; first != sentences.rules.size(); ++first) {
    for (std::size_t second = first + 1; second != sentences.rules.size(); ++second) {
      pairs.push_back(
          {closeness(static_cast<Eigen::Index>(second), static_cast<Eigen::Index>(first)), first,
           second});
    }
  }
  const std::size_t count = std::min(kMostPairs, pairs.size());
  std::partial_sort(pairs.begin(), pairs.begin() + static_cast<std::ptrdiff_t>(count), pairs.end(),
                    [](const Pair& a, const Pair& b) {
                      return std::make_tuple(-a.cosine, a.first, a.second) <
                             std::make_tuple(-b.cosine, b.first, b.second);
                    });
  pairs.resize(count);
  json list = json::array();
  for (const Pair& pair : pairs) {
    list.push_back({{"cosine", pair.cosine},
                    {"first", to_json(*sentences.rules[pair.first])},
                    {"second", to_json(*sentences.rules[pair.second])}});
  }
  return list;
}

json grid_of(const Eigen::MatrixXd& closeness) {
  json grid = json::array();
  for (Eigen::Index row = 0; row != closeness.rows(); ++row) {
    json values = json::array();
    for (Eigen::Index column = 0; column != closeness.cols(); ++column) {
      values.push_back(closeness(row, column));
    }
    grid.push_back(std::move(values));
  }
  return grid;
}

const char* outcome_of(const velmora::Expectation& expectation, const velmora::Match& best) {
  if (!expectation.id) {
    return "out_of_place";
  }
  return best.id == *expectation.id ? "right" : "wrong";
}

// The best answer to each expectation, for the histogram and the threshold that the page moves.
json best_answers(const velmora::Matcher& matcher,
                  const std::vector<velmora::Expectation>& expectations) {
  json answers = json::array();
  velmora::MatchOptions only_best;
  only_best.top = 1;
  for (const velmora::Expectation& expectation : expectations) {
    const velmora::Answer answer = matcher.match(expectation.sentence, only_best);
    if (const velmora::Match* best = answer.best()) {
      answers.push_back({{"line", expectation.line},
                         {"score", best->score},
                         {"outcome", outcome_of(expectation, *best)}});
    }
  }
  return answers;
}

json failures_of(const velmora::Evaluation& evaluation,
                 const std::vector<velmora::Expectation>& expectations) {
  json failures = json::array();
  for (const velmora::Failure& failure : evaluation.failures) {
    const velmora::Expectation& expectation = expectations[failure.expectation];
    const bool wanted = expectation.id.has_value();
    failures.push_back({{"line", expectation.line},
                        {"sentence", expectation.sentence},
                        {"wanted", wanted ? json(*expectation.id) : json(nullptr)},
                        {"rank", wanted ? json(failure.rank) : json(nullptr)},
                        {"wanted_score", wanted ? json(failure.wanted_score) : json(nullptr)},
                        {"got", failure.got.id},
                        {"score", failure.got.score}});
  }
  return failures;
}

}  // namespace

/// One reading of the files, and what was computed from it.
struct Workbench::State {
  State(const velmora::Model& model, const DialogueFiles& files, int number)
      : revision(number),
        stamps(stamps_of(files)),
        matcher(model, velmora::read_rules(files.rules)),
        expectations(files.expectations ? velmora::read_expectations(*files.expectations)
                                        : std::vector<velmora::Expectation>()) {
    if (files.expectations) {
      evaluation = velmora::evaluate(matcher, expectations);
    }
  }

  const SentenceVectors& vectors() {
    std::call_once(vectors_once, [&] {
      sentences = vectors_of(matcher);
      map.emplace(sentences.vectors);
    });
    return sentences;
  }

  const int revision;
  const std::vector<FileStamp> stamps;
  const velmora::Matcher matcher;
  const std::vector<velmora::Expectation> expectations;
  std::optional<velmora::Evaluation> evaluation;

  std::once_flag vectors_once;
  SentenceVectors sentences;
  std::optional<SentenceMap> map;
  Lazy map_json;
  Lazy closeness_json;
  Lazy findings_json;
  Lazy evaluation_json;
};

Workbench::Workbench(velmora::Model model, DialogueFiles files)
    : model_(std::move(model)),
      files_(std::move(files)),
      state_(std::make_shared<State>(model_, files_, 1)),
      last_look_(std::chrono::steady_clock::now()) {}

Workbench::~Workbench() = default;

std::shared_ptr<Workbench::State> Workbench::current() {
  reload_if_changed();
  const std::lock_guard lock(mutex_);
  return state_;
}

void Workbench::reload_if_changed() {
  std::unique_lock lock(mutex_);
  const auto now = std::chrono::steady_clock::now();
  if (reloading_ || now - last_look_ < kBetweenLooks) {
    return;
  }
  last_look_ = now;
  if (stamps_of(files_) == state_->stamps) {
    error_.clear();
    return;
  }
  reloading_ = true;
  const int next_revision = state_->revision + 1;
  lock.unlock();
  std::shared_ptr<State> renewed;
  std::string error;
  try {
    renewed = std::make_shared<State>(model_, files_, next_revision);
  } catch (const std::exception& failure) {
    error = failure.what();
  }
  lock.lock();
  reloading_ = false;
  error_ = std::move(error);
  if (renewed) {
    state_ = std::move(renewed);
  }
}

json Workbench::status() {
  const std::shared_ptr<State> state = current();
  std::size_t sentences = 0;
  for (const velmora::Rule& rule : state->matcher.rules()) {
    sentences += rule.sentences.size();
  }
  const std::lock_guard lock(mutex_);
  return {{"version", VELMORA_VERSION},
          {"language", model_.language()},
          {"dimension", model_.dimension()},
          {"vocabulary_size", model_.vocabulary_size()},
          {"rules_file", files_.rules.filename().string()},
          {"rules", state->matcher.rules().size()},
          {"sentences", sentences},
          {"expectations", files_.expectations.has_value()},
          {"revision", state->revision},
          {"error", error_.empty() ? json(nullptr) : json(error_)}};
}

json Workbench::rules() {
  const std::shared_ptr<State> state = current();
  json list = json::array();
  for (const velmora::Rule& rule : state->matcher.rules()) {
    list.push_back({{"id", rule.id}, {"sentences", rule.sentences}});
  }
  return {{"revision", state->revision}, {"rules", std::move(list)}};
}

json Workbench::match(const std::string& sentence, const velmora::MatchOptions& options) {
  const std::shared_ptr<State> state = current();
  const velmora::Answer answer = state->matcher.match(sentence, options);
  json matches = json::array();
  for (const velmora::Match& match : answer.matches) {
    matches.push_back({{"id", match.id},
                       {"score", match.score},
                       {"sentence", match.sentence},
                       {"text", sentence_text(state->matcher, match.id, match.sentence)}});
  }
  return {{"revision", state->revision},
          {"matches", std::move(matches)},
          // JSON has no infinity, which is the margin when there is only one rule.
          {"margin", state->matcher.rules().size() > 1 ? json(answer.margin) : json(nullptr)},
          {"unknown", answer.unknown},
          {"words", marked_words(model_, sentence, answer.unknown)}};
}

std::optional<json> Workbench::explain(const std::string& sentence, int id) {
  const std::shared_ptr<State> state = current();
  if (state->matcher.find(id) == nullptr) {
    return std::nullopt;
  }
  const velmora::Explanation explanation = state->matcher.explain(sentence, id);
  json pairs = json::array();
  for (const velmora::WordPair& pair : explanation.pairs) {
    pairs.push_back({{"query", pair.query_word},
                     {"rule", pair.rule_word},
                     {"latent", pair.latent},
                     {"words", pair.words},
                     {"characters", pair.characters}});
  }
  return json{{"id", id},
              {"score", explanation.score},
              {"sentence", explanation.sentence},
              {"text", sentence_text(state->matcher, id, explanation.sentence)},
              {"pairs", std::move(pairs)},
              {"unknown", explanation.unknown}};
}

json Workbench::map() {
  const std::shared_ptr<State> state = current();
  return state->map_json.get([&] {
    const SentenceVectors& sentences = state->vectors();
    json points = json::array();
    for (std::size_t column = 0; column != sentences.rule_of_column.size(); ++column) {
      const auto point =
          state->map->place(sentences.vectors.col(static_cast<Eigen::Index>(column)));
      if (point) {
        points.push_back({{"id", sentences.rules[sentences.rule_of_column[column]]->id},
                          {"sentence", sentences.sentence_of_column[column]},
                          {"text", sentences.text(column)},
                          {"x", point->x},
                          {"y", point->y}});
      }
    }
    return json{{"points", std::move(points)}};
  });
}

json Workbench::place(const std::string& sentence) {
  const std::shared_ptr<State> state = current();
  state->vectors();
  return {{"point", to_json(state->map->place(latent_vector(model_, sentence)))}};
}

json Workbench::closeness() {
  const std::shared_ptr<State> state = current();
  return state->closeness_json.get([&] {
    const SentenceVectors& sentences = state->vectors();
    const Eigen::MatrixXd closeness =
        rule_closeness(sentences.vectors, sentences.rule_of_column, sentences.rules.size());
    json rules = json::array();
    for (const velmora::Rule* rule : sentences.rules) {
      rules.push_back(to_json(*rule));
    }
    const bool small = sentences.rules.size() <= kMostRulesInGrid;
    return json{{"rules", std::move(rules)},
                {"grid", small ? grid_of(closeness) : json::array()},
                {"pairs", closest_pairs(sentences, closeness)}};
  });
}

json Workbench::findings() {
  const std::shared_ptr<State> state = current();
  return state->findings_json.get([&] {
    json findings = json::array();
    for (const velmora::Finding& finding : velmora::lint(state->matcher)) {
      findings.push_back({{"kind", velmora::name_of(finding.kind)},
                          {"rule", finding.rule},
                          {"sentence", finding.sentence},
                          {"other", finding.other ? json(*finding.other) : json(nullptr)},
                          {"text", finding.text}});
    }
    return json{{"findings", std::move(findings)}};
  });
}

std::optional<json> Workbench::evaluation() {
  const std::shared_ptr<State> state = current();
  if (!state->evaluation) {
    return std::nullopt;
  }
  return state->evaluation_json.get([&] {
    const velmora::Evaluation& evaluation = *state->evaluation;
    const auto count = [&](double share) {
      return static_cast<std::size_t>(
          std::lround(share * static_cast<double>(evaluation.in_scope)));
    };
    return json{{"sentences", evaluation.in_scope},
                {"out_of_place", evaluation.out_of_scope},
                {"right", count(evaluation.first)},
                {"among_three", count(evaluation.among_three)},
                {"mean_reciprocal_rank", evaluation.mean_reciprocal_rank},
                {"threshold", evaluation.threshold.score},
                {"answers", best_answers(state->matcher, state->expectations)},
                {"failures", failures_of(evaluation, state->expectations)}};
  });
}

}  // namespace serve
