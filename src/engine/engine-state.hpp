// The run-time state of an engine, and what the two private engines share.
//
// VelmoraPrivate and AppModelPrivate are this state plus their published members; every member is a
// line or two around a function over the state (rule-compilation.hpp, matching.hpp, ...). What
// differs between the two is an argument: a threshold, or how the engine reports. Used by both
// private engines. Not installed. Tested by tests/engine/matching-test.cpp and the tests
// beside it.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <fennel/stemmer.hpp>
#include <velmora/wordsense-model.hpp>

#include "../latent/gram-inverse.hpp"
#include "../ranking/rule-index.hpp"
#include "../support/tables.hpp"

namespace zu::log {
class Category;
}

namespace VX::Dialog {

/// All fields of an engine, in their published order, and behind them what is derived from them. A
/// plain record: fields are public, and nothing but the engine functions writes them; a test or a
/// debugger that does will still get answers to what the fields hold.
struct EngineState {
  std::string fModelRoot;       ///< language directory of the selected model, ends in "/"
  std::string fModelDir;        ///< fModelRoot + "model/"; snapshots are here too
  std::string fModelFile;       ///< fModelDir + "model"
  std::string fReservedFile;    ///< not in use
  std::string fIdfFile;         ///< fModelDir + "idf"
  std::string fDictionaryFile;  ///< fModelDir + "dictionary"
  std::string fReservedPath;    ///< not in use
  std::string fReservedName;    ///< not in use
  std::map<int, std::map<int, double>> fWordDists;  ///< cosines by position in the vocabulary
  detail::Vocabulary fVocab;                        ///< word to word id
  detail::StemCounts fRuleFreqs;                    ///< stem to number of rules that hold it
  detail::IdfTable fIdf;                            ///< word id to idf
  wordsense_model fModel;                           ///< the latent model
  Eigen::MatrixXd fModelGram;        ///< D x D: missing_weight * word_factors * word_factors'
  detail::VectorTable fRuleVectors;  ///< one latent vector a distinct stem set
  std::map<int, std::vector<double>> fReservedVectors;  ///< not in use
  std::set<int> fActive_rules;                          ///< ids that matching may return
  detail::RuleTable fRuleWords;                         ///< rule id to its known stems
  detail::RowTable fRuleRows;                           ///< rule id to its row of fRuleVectors
  int fMaxResults = 0;                ///< matching appends one entry more than this
  std::unique_ptr<Stemmer> fStemmer;  ///< null until rules are first compiled
  std::string fLanguage;              ///< language code

  detail::GramInverse fGramInverse;  ///< of fModelGram and the model's lambda
  detail::RuleIndex fRuleIndex;      ///< of fRuleVectors, fActive_rules and fRuleRows
};

/// fMaxResults of an engine that starts without a language, and of one made for a language.
inline constexpr int kMaxResults = 20;
inline constexpr int kMaxResultsOfLanguage = 10;

namespace detail {

/// How an engine reports, which is what differs between the two.
struct Reporting {
  zu::log::Category* log;      ///< category of the engine's own log lines
  const bool& dumps;           ///< the switch for dumps of the warm start
  bool refusal_counts_active;  ///< whether the log line of a refused match counts active rules
};

/// The tables of an engine that fold_in reads (src/latent/fold-in.hpp). Computes fGramInverse anew
/// when it is not that of the gram and the lambda as they stand.
struct LatentSpace;
LatentSpace latent_space(EngineState& engine);

/// Gives the engine a fresh stemmer for its language.
void renew_stemmer(EngineState& engine);

}  // namespace detail

}  // namespace VX::Dialog
