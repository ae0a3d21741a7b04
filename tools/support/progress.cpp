#include "progress.hpp"

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

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

Progress::Progress(std::string stage, double total, Show show)
    : terminal_(isatty(STDERR_FILENO) != 0),
      stage_(std::move(stage)),
      total_(total),
      start_(Clock::now()),
      next_drawing_(start_ + std::chrono::milliseconds(300)) {
  visible_ = show == Show::always || (show == Show::on_terminal && terminal_);
}

Progress::~Progress() {
  clear_bar();
}

void Progress::advance(double work) {
  const std::lock_guard<std::mutex> lock(mutex_);
  done_ += work;
  draw_when_due();
}

void Progress::show(std::size_t done, std::size_t total) {
  const std::lock_guard<std::mutex> lock(mutex_);
  done_ = static_cast<double>(done);
  total_ = static_cast<double>(total);
  draw_when_due();
}

void Progress::finish(const std::string& remark) {
  const std::string separator = remark.empty() ? "" : ", ";
  say(stage_ + ": done in " + clock_text(seconds_since(start_)) + separator + remark);
}

void Progress::say(const std::string& line) {
  const std::lock_guard<std::mutex> lock(mutex_);
  if (visible_) {
    clear_bar();
    std::fprintf(stderr, "%s\n", line.c_str());
  }
}

void Progress::draw_when_due() {
  if (visible_ && Clock::now() >= next_drawing_) {
    draw_bar();
    next_drawing_ =
        Clock::now() + (terminal_ ? std::chrono::milliseconds(200) : std::chrono::seconds(10));
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
  drawn_ = terminal_;
}

void Progress::clear_bar() {
  if (drawn_) {
    std::fputs("\r\033[K", stderr);
    std::fflush(stderr);
    drawn_ = false;
  }
}
