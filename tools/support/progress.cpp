#include "progress.hpp"

#include <unistd.h>

#include <algorithm>
#include <iostream>
#include <utility>

namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::milliseconds kInterval{200};

}  // namespace

Progress::Progress(std::string what)
    : what_(std::move(what)),
      watched_(isatty(STDERR_FILENO) != 0),
      next_(Clock::now() + kInterval) {}

Progress::~Progress() {
  if (shown_) {
    std::cerr << "\r\033[K" << std::flush;
  }
}

void Progress::show(std::size_t done, std::size_t total) {
  constexpr std::size_t kCells = 30;
  if (!watched_ || total == 0 || Clock::now() < next_) {
    return;
  }
  next_ = Clock::now() + kInterval;
  shown_ = true;
  const std::size_t filled = std::min(done * kCells / total, kCells);
  std::cerr << "\r" << what_ << " [" << std::string(filled, '#')
            << std::string(kCells - filled, '.') << "] " << done << " of " << total << "\033[K"
            << std::flush;
}
