// The engine behind AppModel: the state and its published members.
//
// It differs from VelmoraPrivate in its log category, in the threshold of matching, and in the
// members that it offers. Exported for a linker, not installed. Tested by
// tests/engine/warm-start-test.cpp and tests/models/models-test.cpp.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include <velmora/export.hpp>

#include "../engine/engine-state.hpp"

namespace VX::Dialog {

class VELMORA_EXPORT AppModelPrivate : public EngineState {
 public:
  /// Appends up to 21 entries a match.
  AppModelPrivate();
  /// Appends up to 11 entries a match.
  explicit AppModelPrivate(std::string language);
  ~AppModelPrivate();
  AppModelPrivate(const AppModelPrivate&) = delete;
  AppModelPrivate& operator=(const AppModelPrivate&) = delete;

  /// As the members of VelmoraPrivate.
  bool xLoadSemanticModels();
  bool xSetModel(const std::string& path, const std::string& language);
  bool xLoadDialogVectors(detail::RuleTable& rules);
  bool xLoadDialogVectorsFromFile(const std::string path, detail::RuleTable rules,
                                  bool compileNewRules);
  bool load_snapshot_index(const std::string path, detail::VectorTable& ls,
                           detail::RuleTable& rules, Stemmer* stemmer);
  bool load_snapshot_ls2(const std::string path, detail::VectorTable& ls, detail::RuleTable& rules,
                         Stemmer* stemmer);
  /// Passes over entries below the threshold; they do not count against the cap.
  int xMatchInput(const std::string sentence, detail::MatchList& matches, double threshold);
  /// Always true.
  bool xActiveAllRules();
};

}  // namespace VX::Dialog
