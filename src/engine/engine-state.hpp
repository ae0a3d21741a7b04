// The run-time state of an engine, and what the two private engines share.
//
// VelmoraPrivate and AppModelPrivate are this state plus their published members; every member is a
// line or two around a function over the state (rule-compilation.hpp, matching.hpp, ...). What
// differs between the two comes in as an EngineKind. Not installed.
#pragma once

#include <fennel/stemmer.hpp>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>
#include <velmora/wordsense-model.hpp>

namespace zu::log {
class Category;
}

namespace VX::Dialog {

/// All fields of an engine, in their published order. A plain record: fields are public, and
/// nothing but the engine functions writes them.
struct EngineState {
  std::string fModelRoot;       ///< language directory of the selected model, ends in "/"
  std::string fModelDir;        ///< fModelRoot + "model/"; snapshots lie here too
  std::string fModelFile;       ///< fModelDir + "model"
  std::string fReservedFile;    ///< not in use
  std::string fIdfFile;         ///< fModelDir + "idf"
  std::string fDictionaryFile;  ///< fModelDir + "dictionary"
  std::string fReservedPath;    ///< not in use
  std::string fReservedName;    ///< not in use
  std::map<int, std::map<int, double>> fWordDists;  ///< cosines by position in the vocabulary
  std::map<std::string, int> fVocab;                ///< word to word id
  std::map<std::string, int> fRuleFreqs;            ///< stem to number of rules that hold it
  std::map<int, double> fIdf;                       ///< word id to idf
  wordsense_model fModel;                           ///< the latent model
  Eigen::MatrixXd fModelGram;  ///< D x D: missing_weight * word_factors * word_factors'
  std::vector<std::vector<double>> fRuleVectors;        ///< one latent vector a distinct stem set
  std::map<int, std::vector<double>> fReservedVectors;  ///< not in use
  std::set<int> fActive_rules;                          ///< ids that matching may return
  std::map<int, std::vector<std::string>> fRuleWords;   ///< rule id to its known stems
  std::map<int, int> fRuleRows;                         ///< rule id to its row of fRuleVectors
  int fMaxResults = 0;                ///< matching appends one entry more than this
  std::unique_ptr<Stemmer> fStemmer;  ///< null until rules are first compiled
  std::string fLanguage;              ///< language code
};

/// What differs between the engines.
struct EngineKind {
  zu::log::Category* log;   ///< category of the engine's own log lines
  const bool& dumps;        ///< the switch for dumps of the warm start
  bool guard_tells_active;  ///< whether the refusal of a match tells the number of active rules
};

/// fMaxResults of an engine that starts without a language, and of one made for a language.
inline constexpr int kMaxResults = 20;
inline constexpr int kMaxResultsOfLanguage = 10;

}  // namespace VX::Dialog
