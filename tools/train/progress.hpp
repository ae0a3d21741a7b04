// The progress bar on standard error, with elapsed and remaining time.
//
// Used by every stage. On a terminal the bar is redrawn in place; in a log file a line appears
// every ten seconds and one at the end.
#pragma once

#include <chrono>
#include <mutex>
#include <string>

namespace velmora::trainer {

/// One stage. Any thread may call advance.
class Progress {
 public:
  /// total: the amount of work, in any unit; 0 when it is not known. A quiet bar draws nothing.
  Progress(bool quiet, std::string stage, double total);

  /// Adds to the work done and draws, if the last drawing is old enough.
  void advance(double work);

  /// Draws the end of the stage, with `remark` behind it.
  void finish(const std::string& remark);

  /// Prints a line of its own, above the bar.
  void say(const std::string& line);

 private:
  void draw_bar();
  void clear_bar();

  std::mutex mutex_;
  bool quiet_;
  bool terminal_;
  std::string stage_;
  double total_;
  double done_ = 0.0;
  std::chrono::steady_clock::time_point start_;
  std::chrono::steady_clock::time_point next_drawing_;
};

}  // namespace velmora::trainer
