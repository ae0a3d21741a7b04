// Shows the elapsed time of work that can't report its progress, on a terminal only.
//
// Used by `velmora match --published`, whose classes compile all rules in one call. Tested by
// tools/velmora/tests/published-test.cpp, but for what it draws.
#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

#include "progress.hpp"

/// Draws, from a thread of its own, until it goes away.
class ElapsedTime {
 public:
  explicit ElapsedTime(std::string stage)
      : progress_(std::move(stage)), thread_([this](const std::stop_token& stop) { draw(stop); }) {}

 private:
  void draw(const std::stop_token& stop) {
    std::unique_lock<std::mutex> lock(mutex_);
    while (!stop.stop_requested()) {
      stopped_.wait_for(lock, stop, kInterval, [] { return false; });
      progress_.advance(0.0);
    }
  }

  static constexpr std::chrono::milliseconds kInterval{200};

  Progress progress_;
  std::mutex mutex_;
  std::condition_variable_any stopped_;
  // The last member: it is joined before what it uses goes away.
  std::jthread thread_;
};
