// The short road of the fold-in against the direct one, which is the definition.
#include "latent/fold-in.hpp"

#include <cmath>
#include <functional>
#include <string>

#include <gtest/gtest.h>

namespace {

using namespace VX::Dialog::detail;
using Eigen::MatrixXd;
using Eigen::VectorXd;

// A model and a sentence of its first words.
struct Sentence {
  Sentence(Eigen::Index dim, Eigen::Index words) {
    model.dim = static_cast<int>(dim);
    model.lambda = 5.0;
    model.missing_weight = 0.01;
    model.word_factors = MatrixXd::Random(dim, 4 * dim);
    word_gram = compute_word_gram(model);
    for (int word = 0; word != words; ++word) {
      terms.push_back({word, 1.0, 1.0 + 0.37 * word});
    }
  }
  VectorXd directly() const { return fold_in_directly(terms, model, word_gram); }
  VectorXd by_update() const { return fold_in_terms(terms, model, word_gram, inverse()); }
  // As one of many sentences, whose words have factors.
  VectorXd with_shared_words() const {
    std::vector<int> word_ids = {0, 0};
    for (const Term& term : terms) {
      if (term.word_id >= model.word_factors.cols()) {
        return by_update();
      }
      word_ids.push_back(term.word_id);
    }
    const GramInverse gram_inverse = inverse();
    const FoldedWords words(word_ids, model, gram_inverse);
    return fold_in_terms(terms, model, word_gram, gram_inverse, &words);
  }
  MatrixXd columns() const { return fold_in_columns(terms, model, word_gram, inverse()); }
  GramInverse inverse() const { return GramInverse(word_gram, model.lambda); }

  wordsense_model model;
  MatrixXd word_gram;
  std::vector<Term> terms;
};

TEST(FoldIn, ByUpdateIsTheDirectOneToRounding) {
  int short_roads = 0;
  for (unsigned seed = 0; seed != 400; ++seed) {
    SCOPED_TRACE(seed);
    std::srand(seed);  // Eigen draws from it too
    const int dim = seed % 100 == 99 ? 300 : 1 + std::rand() % 60;
    Sentence sentence(dim, 1 + std::rand() % (dim / 2 + 2));
    sentence.model.lambda = 0.01 * (1 + std::rand() % 1000);
    sentence.model.missing_weight = 0.01 * (std::rand() % 101);
    sentence.model.word_factors *= 0.1 * (1 + std::rand() % 40);
    sentence.model.word_factors.col(1 % dim) *= std::rand() % 3;
    sentence.word_gram = compute_word_gram(sentence.model);
    for (Term& term : sentence.terms) {
      term.word_id = std::rand() % (4 * dim + 1);  // the last one has no factors
      term.value = 0.1 * (std::rand() % 90 - 10);
    }
    const VectorXd direct = sentence.directly();
    const VectorXd found = sentence.by_update();
    EXPECT_LE((found - direct).norm(), 1e-12 * direct.norm());
    EXPECT_LE((sentence.with_shared_words() - direct).norm(), 1e-12 * direct.norm());
    VectorXd values(sentence.columns().cols());
    for (std::size_t k = 0; k != sentence.terms.size(); ++k) {
      values(static_cast<Eigen::Index>(k)) = sentence.terms[k].value;
    }
    EXPECT_LE((sentence.columns() * values - direct).norm(), 1e-11 * direct.norm() + 1e-15);
    short_roads += found != direct;
  }
  EXPECT_GT(short_roads, 200);
}

TEST(FoldIn, ByUpdateServesTheBundledModels) {
  for (const std::string language : {"enu", "frf", "jpj"}) {
    SCOPED_TRACE(language);
    Sentence sentence(2, 0);
    const std::string path = std::string(MODELS_DIR) + "/" + language + "/model/model";
    ASSERT_TRUE(VX::Dialog::read_wordsense_model(path, sentence.model));
    sentence.word_gram = compute_word_gram(sentence.model);
    const GramInverse inverse = sentence.inverse();
    const auto words = static_cast<int>(sentence.model.word_factors.cols());
    std::srand(3);
    for (const int length : {1, 2, 4, 8, 16, 32, 50}) {
      sentence.terms.clear();
      for (int word = 0; word != length; ++word) {
        sentence.terms.push_back({std::rand() % words, 1.0, 0.1 * (1 + std::rand() % 90)});
      }
      const VectorXd direct = sentence.directly();
      const VectorXd found =
          fold_in_terms(sentence.terms, sentence.model, sentence.word_gram, inverse);
      EXPECT_LE((found - direct).norm(), 1e-12 * direct.norm());
      EXPECT_NE(found, direct);  // by the update, at every length
    }
  }
}

struct DirectCase {
  const char* what;
  std::function<void(Sentence&)> change;
};

const DirectCase kDirectCases[] = {
    {"more words than half the dimensions", [](Sentence& s) { s = Sentence(10, 6); }},
    {"a presence other than 1", [](Sentence& s) { s.terms[1].presence = 0.5; }},
    {"singular",
     [](Sentence& s) {
       s.word_gram.setZero();
       s.model.lambda = 0.0;
     }},
    {"ill-conditioned", [](Sentence& s) { s.word_gram(0, 0) = 1e5; }},
    {"not finite", [](Sentence& s) { s.word_gram(0, 0) = NAN; }},
    {"not symmetric", [](Sentence& s) { s.word_gram(0, 1) += 1.0; }},
    {"not positive definite", [](Sentence& s) { s.word_gram(0, 0) = -20.0; }},
    {"absent words weigh more", [](Sentence& s) { s.model.missing_weight = 1.5; }},
    {"factors that outweigh the gram", [](Sentence& s) { s.model.word_factors *= 1e6; }},
    {"an infinite value", [](Sentence& s) { s.terms[2].value = INFINITY; }},
    {"words that cancel",
     [](Sentence& s) {
       s.model.word_factors.col(1) = -s.model.word_factors.col(0);
       s.terms = {{0, 1.0, 0.7}, {1, 1.0, 0.7}};
     }},
};

TEST(FoldIn, IsDirectWhereTheUpdateDoesNotHold) {
  std::srand(7);
  const Sentence plain(12, 4);
  EXPECT_NE(plain.by_update(), plain.directly());  // the roads can be told apart
  for (const DirectCase& c : kDirectCases) {
    SCOPED_TRACE(c.what);
    Sentence sentence = plain;
    c.change(sentence);
    const VectorXd direct = sentence.directly();
    const VectorXd found = sentence.by_update();
    for (Eigen::Index d = 0; d != direct.size(); ++d) {
      EXPECT_TRUE(found(d) == direct(d) || (std::isnan(found(d)) && std::isnan(direct(d))));
    }
  }
}

TEST(GramInverse, KnowsWhatItIsOf) {
  const MatrixXd gram = MatrixXd::Identity(3, 3);
  const GramInverse inverse(gram, 0.5);
  EXPECT_TRUE(inverse.is_of(gram, 0.5));
  EXPECT_FALSE(inverse.is_of(gram, 0.25));
  EXPECT_FALSE(inverse.is_of(MatrixXd::Identity(2, 2), 0.5));
  MatrixXd changed = gram;
  changed(2, 2) = std::nextafter(1.0, 2.0);
  EXPECT_FALSE(inverse.is_of(changed, 0.5));
  EXPECT_TRUE(GramInverse().is_of(MatrixXd(), 0.0));
}

}  // namespace
