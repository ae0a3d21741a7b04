// The engine behind Velmora and TopicModel: the state and its published members.
//
// Exported for a linker, not installed. Each member is a line or two around a shared function.
// Tested by tests/engine/matching-test.cpp and the tests beside it.
#pragma once

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <velmora/export.hpp>

#include "engine-state.hpp"

namespace VX::Dialog {

class VELMORA_EXPORT VelmoraPrivate : public EngineState {
 public:
  /// Appends up to 21 entries a match; for Velmora.
  VelmoraPrivate();
  /// Appends up to 11 entries a match; for TopicModel. The two caps are meant to differ.
  explicit VelmoraPrivate(std::string language);
  ~VelmoraPrivate();
  VelmoraPrivate(const VelmoraPrivate&) = delete;
  VelmoraPrivate& operator=(const VelmoraPrivate&) = delete;

  /// See load_semantic_models in model-selection.hpp.
  bool xLoadSemanticModels();
  /// See Velmora::setModel.
  bool xSetModel(std::string& path, std::string& language);
  /// See Velmora::loadDialogVectors; `rules` ends up with the rules' known stems.
  bool xLoadDialogVectors(detail::RuleTable& rules);
  /// See Velmora::loadDialogVectorsFromFile.
  bool xLoadDialogVectorsFromFile(const std::string path, detail::RuleTable rules,
                                  bool compileNewRules);
  /// The index load of warm-start.hpp into `ls`; `rules` stays.
  bool load_snapshot_index(const std::string path, detail::VectorTable& ls,
                           detail::RuleTable& rules, Stemmer* stemmer);
  /// The merge load of warm-start.hpp into `ls`; `rules` is emptied.
  bool load_snapshot_ls2(const std::string path, detail::VectorTable& ls, detail::RuleTable& rules,
                         Stemmer* stemmer);
  /// See Velmora::matchInput.
  int xMatchInput(const std::string sentence, detail::MatchList& matches);
  /// Adds ids to the active set; they are not checked. The argument is only read.
  void xUpdateActiveRules(std::set<int>& rule_ids);
  /// Adds the ids of all compiled rules to the active set.
  void xActiveAllRules();
  /// Takes ids out of the active set. The argument is only read.
  void xUpdateDeactiveRules(std::set<int>& rule_ids);
  /// A copy of the active set.
  std::set<int> getActive_rules() const;
  /// See Velmora::simpleDist.
  double xSimpleDist(std::vector<std::string> first, std::vector<std::string> second);
  /// Idf to stem for the known stems of a sentence; without any, the sentence under 1.0.
  std::map<double, std::string> xSpecificities(const std::string sentence);
  /// See Velmora::loadWordDistIndex.
  int loadWordDists();
};

}  // namespace VX::Dialog
