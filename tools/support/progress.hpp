// How far long work is, on standard error: a bar with elapsed and remaining time.
//
// Used by all programs. On a terminal the bar is redrawn in place; in a log file a line appears
// every ten seconds. Tested by tools/train/tests/program-test.cpp.
#pragma once

#include <chrono>
#include <cstddef>
#include <mutex>
#include <string>

/// One stage of the work. Any thread may call any member.
class Progress {
 public:
  enum class Show { nothing, on_terminal, always };

  /// total: the amount of work, in any unit; 0 when it is not known. Nothing is drawn within the
  /// first moment.
  explicit Progress(std::string stage, double total = 0.0, Show show = Show::on_terminal);
  /// Takes the bar off the terminal.
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// Adds to the work done and draws, if the last drawing is old enough.
  void advance(double work);

  /// The same for work that is counted elsewhere.
  void show(std::size_t done, std::size_t total);

  /// Prints that the stage is done, the time it took, and the remark.
  void finish(const std::string& remark);

  /// Prints a line of its own, above the bar.
  void say(const std::string& line);

 private:
  void draw_when_due();
  void draw_bar();
  void clear_bar();

  std::mutex mutex_;
  bool visible_;
  bool terminal_;
  bool drawn_ = false;
  std::string stage_;
  double total_;
  double done_ = 0.0;
  std::chrono::steady_clock::time_point start_;
  std::chrono::steady_clock::time_point next_drawing_;
};
