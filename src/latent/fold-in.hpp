// Fold-in of sentences into the latent space: the heart of matching and compilation.
//
// wordsense_inference takes the direct road, which is the definition; everything else, by way of
// fold_in or of fold_in_terms, the short one. On neither does a sentence touch more of the model
// than its own words. Not installed. Tested by tests/latent/fold-in-test.cpp,
// tests/latent/inference-test.cpp and tests/engine/chain-test.cpp.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <velmora/wordsense-model.hpp>

#include "../support/tables.hpp"
#include "gram-inverse.hpp"

namespace VX::Dialog::detail {

/// A word of a sentence as inference sees it.
struct Term {
  int word_id;      ///< column of word_factors; outside them the word adds nothing
  double presence;  ///< weight of the present word, 1 in every sentence of this library
  double value;     ///< tf-idf times presence
};

/// What folding needs beside the sentences. Refers to tables that must outlive it.
struct LatentSpace {
  const Vocabulary& vocabulary;
  const IdfTable& idf;
  const wordsense_model& model;
  const Eigen::MatrixXd& word_gram;
  const GramInverse& gram_inverse;  ///< of word_gram and the lambda of the model
};

/// missing_weight * word_factors * word_factors', D x D.
Eigen::MatrixXd compute_word_gram(const wordsense_model& model);

/// True when the shapes of factors and gram agree with model.dim, which is more than 0.
bool shapes_agree(const wordsense_model& model, const Eigen::MatrixXd& word_gram);

/// The latent vector (D) of one sentence,
///
///     q = (word_gram + U B + lambda I)^-1 U v,
///
/// where U are the factors of its terms, B = (presence - missing_weight) U' row by row, and v their
/// values; computed as it stands, in D^3 + s D^2 steps. The shapes must agree and there must be a
/// term.
Eigen::VectorXd fold_in_directly(const std::vector<Term>& terms, const wordsense_model& model,
                                 const Eigen::MatrixXd& word_gram);

/// The part of folding that depends on single words, H times their factors, computed once for many
/// sentences: their words repeat. D numbers a word.
class FoldedWords {
 public:
  /// word_ids   columns of word_factors, in any order, with or without repeats
  FoldedWords(std::vector<int> word_ids, const wordsense_model& model,
              const GramInverse& gram_inverse);

  /// D x s: the columns of some terms, whose words must be among those given.
  Eigen::MatrixXd of(const std::vector<Term>& terms) const;

 private:
  std::vector<int> word_ids_;  // sorted
  Eigen::MatrixXd columns_;
};

/// The same within 1e-12 of its length, in s D^2 + s^2 D + s^3 steps. `gram_inverse` must be that
/// of word_gram and model.lambda.
///
/// words   spares the first of these summands; null for a sentence of its own. Moves the result by
///         a rounding at most.
Eigen::VectorXd fold_in_terms(const std::vector<Term>& terms, const wordsense_model& model,
                              const Eigen::MatrixXd& word_gram, const GramInverse& gram_inverse,
                              const FoldedWords* words = nullptr);

/// What each term adds to that vector: Y (D x s) with q = Y v, so that column k times the value of
/// term k is the part of term k.
Eigen::MatrixXd fold_in_columns(const std::vector<Term>& terms, const wordsense_model& model,
                                const Eigen::MatrixXd& word_gram, const GramInverse& gram_inverse);

/// Folds sentences (id to stems) and appends one vector of model.dim values for each, by ascending
/// id. Stems outside the vocabulary play no part; a sentence without known stems, and every
/// sentence of a model whose shapes disagree, is zeros. Nothing is appended when an exception
/// passes.
void fold_in(const RuleTable& sentences, const LatentSpace& space, VectorTable& vectors);

}  // namespace VX::Dialog::detail
