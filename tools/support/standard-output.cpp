#include "standard-output.hpp"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <iostream>
#include <stdexcept>
#include <string>

void prepare_standard_streams() {
  std::signal(SIGPIPE, SIG_IGN);
  for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (fcntl(descriptor, F_GETFD) == -1) {
      // The lowest free number is this one. The mode makes every use of it fail, as before.
      (void)open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
    }
  }
}

void flush_output() {
  errno = 0;
  std::cout.flush();
  if (!std::cout) {
    // The reason is lost when an earlier write failed.
    const std::string reason = errno == 0 ? "" : std::string(": ") + std::strerror(errno);
    throw std::runtime_error("cannot write to standard output" + reason);
  }
}
