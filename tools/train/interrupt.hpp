// Interruption by a signal: long work asks from time to time whether it is to stop.
//
// Used by every stage. SIGINT, SIGTERM and SIGHUP set a flag; check_interrupt turns the flag into
// an exception, so that destructors clear what is half written. Tested by
// tools/train/tests/program-test.cpp.
#pragma once

#include <exception>

namespace velmora::trainer {

/// Thrown by check_interrupt.
struct Interrupted : std::exception {
  const char* what() const noexcept override { return "interrupted"; }
};

/// From now on the first of each of the three signals only sets the flag; a second one kills.
void watch_for_interrupts();

/// The signal that has arrived, or 0.
int interrupting_signal();

/// Throws Interrupted when a signal has arrived. Any thread may call it.
void check_interrupt();

}  // namespace velmora::trainer
