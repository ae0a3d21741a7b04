#include "interrupt.hpp"

#include <atomic>
#include <csignal>

namespace velmora::trainer {

namespace {

std::atomic<int> arrived_signal{0};
static_assert(std::atomic<int>::is_always_lock_free, "a signal handler must not lock");

void note_signal(int signal) {
  arrived_signal.store(signal);
}

}  // namespace

void watch_for_interrupts() {
  for (int signal : {SIGINT, SIGTERM, SIGHUP}) {
    struct sigaction action = {};
    action.sa_handler = note_signal;
    action.sa_flags = static_cast<int>(SA_RESETHAND);  // who can't wait sends it again
    sigaction(signal, &action, nullptr);
  }
}

int interrupting_signal() {
  return arrived_signal.load();
}

void check_interrupt() {
  if (interrupting_signal() != 0) {
    throw Interrupted();
  }
}

}  // namespace velmora::trainer
