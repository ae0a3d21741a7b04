// Sentences of words that a bundled model knows, words that it does not, and repeats.
//
// Used by the tests of the matcher that compare two ways to the same numbers.
#pragma once

#include <algorithm>
#include <random>

#include <velmora/rules.hpp>

#include "fixtures.hpp"
#include "matcher/model-data.hpp"

namespace test {

/// The same seed, the same sentences.
class RandomSentences {
 public:
  RandomSentences(const velmora::Model& model, unsigned seed) : random_(seed) {
    // A hundred words that begin with a letter, so that sentences share some.
    for (const auto& [word, word_id] : model.data().vocabulary) {
      if (static_cast<unsigned char>(word.front()) >= 'a') {
        words_.push_back(word);
      }
    }
    std::shuffle(words_.begin(), words_.end(), random_);
    words_.resize(std::min<std::size_t>(words_.size(), 100));
    words_.insert(words_.end(), {"qxyzzy", "qxyzzies", "Blorp", "7q7"});
  }

  std::string sentence() {
    std::string text = word();
    for (int more = number(0, 9); more > 0; --more) {
      text += " " + word();
    }
    return text;
  }

  std::vector<velmora::Rule> rules(int count, int most_sentences) {
    std::vector<velmora::Rule> rules;
    for (int id = 1; id <= count; ++id) {
      rules.push_back({count + 1 - id, {}});  // not in the order of their ids
      for (int more = number(1, most_sentences); more > 0; --more) {
        rules.back().sentences.push_back(sentence());
      }
    }
    return rules;
  }

  int number(int from, int to) { return std::uniform_int_distribution<int>(from, to)(random_); }

 private:
  std::string word() {
    return words_[static_cast<std::size_t>(number(0, static_cast<int>(words_.size()) - 1))];
  }

  std::mt19937 random_;
  std::vector<std::string> words_;
};

}  // namespace test
