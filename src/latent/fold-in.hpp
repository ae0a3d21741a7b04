// Fold-in of sentences into the latent space: the heart of matching and compilation.
//
// fold_in_terms is the one place where a latent vector is computed; wordsense_inference and fold_in
// both call it, so the exported chain and the engine agree to the last bit. A sentence of s words
// costs O(s D^2 + D^3), whatever the size of the vocabulary. Not installed. Tested by
// tests/latent/inference-test.cpp and tests/engine/chain-test.cpp.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <velmora/wordsense-model.hpp>

#include "../support/tables.hpp"

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
};

/// missing_weight * word_factors * word_factors', D x D.
Eigen::MatrixXd compute_word_gram(const wordsense_model& model);

/// True when the shapes of factors and gram agree with model.dim, which is more than 0.
bool shapes_agree(const wordsense_model& model, const Eigen::MatrixXd& word_gram);

/// The latent vector (D) of one sentence, q = (word_gram + U B + lambda I)^-1 U v, where U are the
/// factors of its terms, B = (presence - missing_weight) U' row by row, and v their values.
/// The shapes must agree and there must be a term.
Eigen::VectorXd fold_in_terms(const std::vector<Term>& terms, const wordsense_model& model,
                              const Eigen::MatrixXd& word_gram);

/// Folds sentences (id to stems) and appends one vector of model.dim values for each, by ascending
/// id. Stems outside the vocabulary play no part; a sentence without known stems, and every
/// sentence of a model whose shapes disagree, is zeros. Nothing is appended when an exception
/// passes.
void fold_in(const RuleTable& sentences, const LatentSpace& space, VectorTable& vectors);

}  // namespace VX::Dialog::detail
