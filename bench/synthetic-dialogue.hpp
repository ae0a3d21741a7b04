// A made-up model and dialogue of any size, for all benchmarks.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "engine/velmora-private.hpp"

namespace bench {

using Rules = std::map<int, std::vector<std::string>>;

/// Words of each rule and sentence: about what is left of "please turn the lamp in the hall on".
inline constexpr int kWordsInSentence = 8;

/// An engine over a vocabulary of made-up words with random factors, its own folder as model folder
/// (removed with it), and no rules. Same arguments, same engine.
class SyntheticDialogue {
 public:
  SyntheticDialogue(int vocabulary_size, int dim, unsigned seed = 1);
  ~SyntheticDialogue();
  SyntheticDialogue(const SyntheticDialogue&) = delete;
  SyntheticDialogue& operator=(const SyntheticDialogue&) = delete;

  /// Rules of one sentence each, all different; ids from `first_id` on.
  Rules make_rules(int count, int first_id = 1);
  std::string make_sentence();
  /// Gives the engine `count` active rules with random vectors, without compiling anything.
  void fill_rules(int count);

  VX::Dialog::VelmoraPrivate engine;

 private:
  unsigned random();

  unsigned state_;
  int vocabulary_size_;
};

}  // namespace bench
