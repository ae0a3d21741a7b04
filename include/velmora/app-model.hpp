// A matcher over named applications. Tested by tests/models/models-test.cpp.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <velmora/debug.hpp>
#include <velmora/export.hpp>

namespace VX::Dialog {

class AppModelPrivate;

/// Matches a sentence against applications, each described by sentences, and answers with their
/// names. One thread at a time for each object.
class VELMORA_EXPORT AppModel {
 public:
  AppModel();
  ~AppModel();
  AppModel(const AppModel&) = delete;
  AppModel& operator=(const AppModel&) = delete;

  /// Loads a model (see Velmora::setModel) and indexes the applications; all are active.
  ///
  /// applications   name to the sentences that describe it; only read
  ///
  /// False: no model was found, or its scalar file can't be read. The names are entered all the
  /// same, and isReady keeps its value. Meant for a fresh object: names of an earlier call stay
  /// where the new table is shorter, and vectors are appended as Velmora::loadDialogVectors says.
  /// Throws what Velmora::setModel and Velmora::loadDialogVectors throw.
  bool setModel(const std::string path, const std::string language,
                std::map<std::string, std::vector<std::string>>& applications);

  /// True once a setModel has succeeded.
  bool isReady();

  /// Ranks the applications for one sentence (UTF-8).
  ///
  /// matches     one entry for each distinct score that reaches the threshold is appended, best
  ///             first: the score and the names that have it, ascending. At most 21 entries.
  /// threshold   least score of an entry
  ///
  /// -1, with a warning in the log, when no application was ever entered; otherwise 1, also when
  /// the engine could not match and nothing was appended. A NaN score reaches no threshold. Throws
  /// std::out_of_range when no application has a known word.
  int matchInput(const std::string sentence,
                 std::vector<std::pair<double, std::vector<std::string>>>& matches,
                 double threshold);

 private:
  std::unique_ptr<AppModelPrivate> engine_;
  std::map<int, std::string> fAppNames;
  bool fReady = false;
};

}  // namespace VX::Dialog
