// A progress bar on standard error, when somebody watches.
//
// Used by velmora and velmora-evaluate for what takes longer than a moment.
#pragma once

#include <chrono>
#include <cstddef>
#include <string>

/// Draws nothing within the first moment, and nothing when standard error is not a terminal. Gone
/// from the screen with the object.
class Progress {
 public:
  explicit Progress(std::string what);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// Says how much is done. Any thread may call it, one at a time.
  void show(std::size_t done, std::size_t total);

 private:
  std::string what_;
  bool watched_;
  bool shown_ = false;
  std::chrono::steady_clock::time_point next_;
};
