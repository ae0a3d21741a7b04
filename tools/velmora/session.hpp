// What `velmora match` asks for each sentence, whichever classes of the library answer.
//
// Tested by tools/velmora/tests/commands-test.cpp.
#pragma once

#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

#include "dialogue.hpp"
#include "ranking-output.hpp"

struct MatchSettings {
  DialogueOptions dialogue;
  int top = 5;
  std::optional<double> threshold;
  /// Ids and ranges of ids; empty for all rules.
  std::string active;
  bool json = false;

  /// Through VX::Dialog::Velmora, or AppModel when `apps` is set.
  bool published = false;
  std::string apps;
  /// Name of a file in the model directory; empty for none.
  std::string snapshot;
  /// Show the log of the library.
  bool verbose = false;
};

struct Session {
  /// At most settings.top rules that reach settings.threshold.
  std::function<Ranking(const std::string& sentence, const MatchSettings& settings)> rank;

  /// Lets only these rules match from now on. Throws WrongUsage. Empty for applications.
  std::function<void(const std::string& ids)> activate;

  /// Prints why a rule, or the best one, got its score. Empty for the published classes.
  std::function<void(std::ostream& out, const std::string& sentence, std::optional<int> rule_id)>
      why;
};

/// Reads the rules and makes everything ready; all rules are active but for settings.active. Throws
/// WrongUsage, and std::exception for files that are not as they should be.
Session open_session(const MatchSettings& settings);

/// Its two kinds.
Session open_matcher_session(const MatchSettings& settings);
Session open_published_session(const MatchSettings& settings);
