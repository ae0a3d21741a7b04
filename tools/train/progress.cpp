// Implementation of progress.hpp.
#include "progress.hpp"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

namespace velmora::trainer {

namespace {

using Clock = std::chrono::steady_clock;

double seconds_since(Clock::time_point start) {
  return std::chrono::duration<double>(Clock::now() - start).count();
}

std::string clock_text(double seconds) {
  const long whole = std::lround(seconds);
  char text[32];
  std::snprintf(text, sizeof text, "%ld:%02ld:%02ld", whole / 3600, whole / 60 % 60, whole % 60);
  return text;
}

std::string bar_text(double share) {
  constexpr int kWidth = 30;
  const int filled = static_cast<int>(share * kWidth);
  std::string text = "[";
  text.append(static_cast<std::size_t>(filled), '#');
  text.append(static_cast<std::size_t>(kWidth - filled), '.');
  return text + "]";
}

}  // namespace

Progress::Progress(bool quiet, std::string stage, double total)
    : quiet_(quiet),
      terminal_(isatty(STDERR_FILENO) != 0),
      stage_(std::move(stage)),
      total_(total),
      start_(Clock::now()),
      next_drawing_(start_ + std::chrono::milliseconds(300)) {}

void Progress::advance(double work) {
  std::lock_guard<std::mutex> lock(mutex_);
  done_ += work;
  if (!quiet_ && Clock::now() >= next_drawing_) {
    draw_bar();
    next_drawing_ =
        Clock::now() + (terminal_ ? std::chrono::milliseconds(200) : std::chrono::seconds(10));
  }
}

void Progress::finish(const std::string& remark) {
  const std::string separator = remark.empty() ? "" : ", ";
  say(stage_ + ": done in " + clock_text(seconds_since(start_)) + separator + remark);
}

void Progress::say(const std::string& line) {
  std::lock_guard<std::mutex> lock(mutex_);
  if (!quiet_) {
    clear_bar();
    std::fprintf(stderr, "%s\n", line.c_str());
  }
}

void Progress::draw_bar() {
  const double elapsed = seconds_since(start_);
  const double share = total_ > 0.0 ? std::min(done_ / total_, 1.0) : 0.0;
  std::string text = stage_ + ": ";
  if (share > 0.0) {
    text += bar_text(share) + " " + std::to_string(static_cast<int>(100.0 * share)) +
            " %, elapsed " + clock_text(elapsed) + ", remaining " +
            clock_text(elapsed / share - elapsed);
  } else {
    text += "elapsed " + clock_text(elapsed);
  }
  clear_bar();
  std::fprintf(stderr, terminal_ ? "%s" : "%s\n", text.c_str());
  std::fflush(stderr);
}

void Progress::clear_bar() {
  if (terminal_) {
    std::fputs("\r\033[K", stderr);
  }
}

}  // namespace velmora::trainer
