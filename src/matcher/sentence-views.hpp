// The three views of a sentence: latent vector, words, characters.
//
// Rules and queries are seen alike, so that a score is a sum of dot products. Not installed. Tested
// by tests/matcher/matcher-test.cpp.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "model-data.hpp"

namespace velmora::detail {

/// An entry of a sparse vector.
struct Feature {
  int id;
  double value;
};
/// By ascending id, of length 1 or empty.
using SparseVector = std::vector<Feature>;

double dot(const SparseVector& first, const SparseVector& second);

/// How a model and the rules of a dialogue see sentences.
class Views {
 public:
  /// sentences   stems of every sentence of the rules
  Views(const Model& model, const std::vector<std::vector<std::string>>& sentences);

  const ModelData& model() const { return model_.data(); }

  /// Word view: each distinct stem weighs its idf, one outside the dictionary as much as the rarest
  /// word. Words that neither model nor rules know have no id: they take their part of the length
  /// and are left out.
  SparseVector words(const std::vector<std::string>& stems) const;

  /// Character view: pieces of words by (1 + log count) * idf, the idf from the sentences of the
  /// rules. Pieces that are in no rule are left out.
  SparseVector characters(const std::vector<std::string>& stems) const;

  /// Id of a stem in the word view; -1 for one that neither model nor rules know.
  int word_id(const std::string& stem) const;
  /// Number of word ids, and of piece ids.
  std::size_t word_count() const { return model().vocabulary.size() + new_words_.size(); }
  std::size_t piece_count() const { return piece_idf_.size(); }

  /// The character view of a sentence (what characters() gives) by word: a piece that several words
  /// hold is shared out by how often each holds it. The parts add up to the whole.
  std::vector<SparseVector> character_parts(const std::vector<std::string>& stems,
                                            const SparseVector& whole) const;

 private:
  double weight_of(int word_id) const;
  std::vector<std::string> pieces_of(const std::string& stem) const;
  // Ids of the pieces of a word that are in the rules, sorted, repeats included.
  std::vector<int> piece_ids(const std::string& stem) const;

  Model model_;
  std::unordered_map<std::string, int> new_words_;  // ids from the size of the vocabulary on
  std::unordered_map<std::string, int> piece_ids_;
  std::vector<double> piece_idf_;
};

}  // namespace velmora::detail
