// What the workbench knows: rules, their matcher and expectations, renewed when the files change.
//
// Every question of the HTTP interface is one member that gives JSON as page/openapi.yaml describes
// it. Used by http-interface.cpp. Tested by tools/velmora/tests/browser_test.py and
// serve_transport_test.py.
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include <nlohmann/json_fwd.hpp>

#include <velmora/matcher.hpp>

namespace serve {

/// The files that a dialogue author edits.
struct DialogueFiles {
  std::filesystem::path rules;
  std::optional<std::filesystem::path> expectations;
};

/// Safe from any thread. Questions are answered from the state of the files at most a second ago;
/// one that arrives while a changed file is being compiled is answered from the state before.
class Workbench {
 public:
  /// Throws velmora::Error when a file can't be used.
  Workbench(velmora::Model model, DialogueFiles files);
  ~Workbench();
  Workbench(const Workbench&) = delete;
  Workbench& operator=(const Workbench&) = delete;

  /// Which files, how many rules, and what is wrong with a file that has changed and can't be used:
  /// the state before it then stays.
  nlohmann::json status();
  nlohmann::json rules();
  nlohmann::json match(const std::string& sentence, const velmora::MatchOptions& options);
  /// Nothing when there is no rule `id`.
  std::optional<nlohmann::json> explain(const std::string& sentence, int id);
  /// Every sentence as a point: the first two principal components, from -1 to 1.
  nlohmann::json map();
  /// Where a sentence lies on the map.
  nlohmann::json place(const std::string& sentence);
  nlohmann::json closeness();
  nlohmann::json findings();
  /// Nothing without expectations.
  std::optional<nlohmann::json> evaluation();

 private:
  struct State;

  std::shared_ptr<State> current();
  void reload_if_changed();

  const velmora::Model model_;
  const DialogueFiles files_;
  std::mutex mutex_;  // guards what follows
  std::shared_ptr<State> state_;
  std::string error_;
  bool reloading_ = false;
  std::chrono::steady_clock::time_point last_look_;
};

}  // namespace serve
