// The three views of a sentence: latent vector, words, characters.
//
// Rules and queries are seen alike, so that a score is a sum of dot products. Not installed. Tested
// by tests/matcher/matcher-test.cpp.
#pragma once

#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model-data.hpp"

namespace velmora::detail {

/// An entry of a sparse vector.
struct Feature {
  int id;
  float value;
};
/// By ascending id, of length 1 or empty.
using SparseVector = std::vector<Feature>;

/// The natural logarithm in single precision: the last bits of a double may differ from one
/// processor to the next.
double log_of(double value);

double dot(const SparseVector& first, const SparseVector& second);

/// How a model and the rules of a dialogue see sentences.
class Views {
 public:
  /// sentences   every sentence of the rules
  Views(const Model& model, const std::vector<SentenceText>& sentences);

  const ModelData& model() const { return model_.data(); }

  /// Word view: each stem weighs its idf, one outside the dictionary as much as the rarest word.
  /// Stems that neither model nor rules know have no id: they take their part of the length and are
  /// left out.
  SparseVector words(const std::vector<std::string>& stems) const;

  /// What part of the word view, by its squared weights, belongs to stems outside the dictionary:
  /// from 0 to 1, and 1 for a sentence without stems.
  double unknown_share(const std::vector<std::string>& stems) const;

  /// Character view: pieces of the words as they were typed, by (1 + log count) * idf, the idf from
  /// the sentences of the rules. Endings that the stemmer cuts off count here, and a typing error
  /// leaves most pieces of a word whole. Pieces that are in no rule are left out.
  SparseVector characters(const std::vector<std::string>& words) const;

  /// The character view of a sentence (what characters() gives) by word: a piece that several words
  /// hold is shared out by how often each holds it. The parts add up to the whole.
  std::vector<std::map<int, double>> character_parts(const std::vector<std::string>& words,
                                                     const SparseVector& whole) const;

  /// Id of a stem in the word view; -1 for one that neither model nor rules know.
  int word_id(const std::string& stem) const;
  /// Number of word ids, and of piece ids.
  std::size_t word_count() const { return model().vocabulary.size() + new_words_.size(); }
  std::size_t piece_count() const { return piece_idf_.size(); }

 private:
  double weight_of(int word_id) const;
  // Appends the ids of the pieces of a word that are in the rules, repeats included.
  void add_piece_ids(const std::string& word, std::vector<int>& ids) const;

  Model model_;
  std::unordered_map<std::string, int> new_words_;  // ids from the size of the vocabulary on
  std::unordered_map<std::string, int> piece_ids_;
  std::vector<double> piece_idf_;
};

}  // namespace velmora::detail
