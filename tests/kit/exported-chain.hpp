// The chain of exported functions, from stems to vectors and to matches, as a host would call it.
//
// It is the reference for the engines, which compute the same by a shorter formula and so round
// otherwise. Used by chain-test.cpp, inference-test.cpp and fuzz/engine.cpp.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstring>
#include <set>

#include <velmora/frequencies.hpp>
#include <velmora/inference.hpp>
#include <velmora/preprocess.hpp>
#include <velmora/ranking.hpp>
#include <velmora/term-matrix.hpp>
#include <velmora/tfidf.hpp>

#include "engine/engine-state.hpp"
#include "fixtures.hpp"

namespace test {

/// The latent vectors, one column each, of the columns of a term matrix.
inline Eigen::MatrixXd infer(Eigen::SparseMatrix<double> terms, wordsense_model model,
                             Eigen::MatrixXd word_gram) {
  wordsense_corpus corpus;
  VX::Dialog::initialize_wordsense_corpus(corpus, terms);
  Eigen::MatrixXd latent = Eigen::MatrixXd::Ones(1, 7);  // whatever its shape was
  wordsense_inference(corpus, model, latent, word_gram);
  VX::Dialog::delete_wordsense_corpus(corpus);
  return latent;
}

/// The latent vectors of sentences, by ascending id.
inline Vectors chain_vectors(const Rules& sentences, const VX::Dialog::EngineState& engine) {
  std::map<int, std::vector<int>> word_ids;
  VX::Dialog::word_indices(sentences, engine.fVocab, word_ids);
  std::map<int, std::map<int, double>> weights;
  VX::Dialog::tfidf(word_ids, engine.fIdf, weights);
  Eigen::SparseMatrix<double> terms(static_cast<Eigen::Index>(engine.fVocab.size()),
                                    static_cast<Eigen::Index>(sentences.size()));
  VX::Dialog::read_smat_data_OPTIM(weights, terms);
  Vectors vectors;
  VX::Dialog::mat2vec(infer(terms, engine.fModel, engine.fModelGram), vectors);
  return vectors;
}

/// What a compilation of rules, stemmed already, appends to the vectors of the engine; their rows
/// are entered in `rows`.
inline Vectors chain_compilation(const Rules& rules, const VX::Dialog::EngineState& engine,
                                 std::map<int, int>& rows) {
  Rules unique;
  VX::Dialog::preprocess(VX::Dialog::getRulesFrequencies(rules), rules, 0, rows, unique);
  return chain_vectors(unique, engine);
}

/// What a match appends, from the whole ranking of get_max; rows that it adds go to `rows`.
inline Matches chain_matches(const std::string& sentence, VX::Dialog::EngineState& engine,
                             std::map<int, int>& rows) {
  std::vector<std::string> words;
  engine.fStemmer->stem_sentence(sentence, words);
  const std::set<std::string> unique(words.begin(), words.end());
  const Vectors queries = chain_vectors({{0, {unique.begin(), unique.end()}}}, engine);
  std::map<double, std::vector<int>> ranked;
  VX::Dialog::get_max(engine.fRuleVectors, queries.front(), ranked, engine.fActive_rules, rows);
  Matches matches(ranked.rbegin(), ranked.rend());
  matches.resize(std::min(matches.size(), static_cast<std::size_t>(engine.fMaxResults) + 1));
  return matches;
}

/// Equal to the last bit; so a NaN equals itself, and 0 is not -0.
inline bool same_bits(const std::vector<double>& first, const std::vector<double>& second) {
  return first.size() == second.size() &&
         (first.empty() ||
          std::memcmp(first.data(), second.data(), first.size() * sizeof(double)) == 0);
}

/// True within 1e-12 of the length; NaN and infinities are in the same places.
inline bool are_close(const std::vector<double>& first, const std::vector<double>& second) {
  double distance = 0.0;
  double length = 0.0;
  for (std::size_t d = 0; d != std::min(first.size(), second.size()); ++d) {
    if (std::isfinite(first[d]) || std::isfinite(second[d])) {
      distance = std::hypot(distance, first[d] - second[d]);
      length = std::hypot(length, second[d]);
    } else if (std::isnan(first[d]) != std::isnan(second[d])) {
      return false;
    }
  }
  return first.size() == second.size() && distance <= 1e-12 * length;
}

/// Scores of close vectors. Any NaN equals any other.
inline bool is_close(double first, double second) {
  return std::isnan(second) ? std::isnan(first) : std::abs(first - second) < 1e-11;
}

/// True when rounding alone separates two scores: engine and chain may then group rules otherwise.
inline bool has_near_ties(const Matches& matches) {
  return std::adjacent_find(matches.begin(), matches.end(), [](const auto& high, const auto& low) {
           return high.first - low.first < 1e-12;
         }) != matches.end();
}

}  // namespace test
