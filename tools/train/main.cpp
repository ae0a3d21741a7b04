// velmora-train: trains a latent model on text. Usage: velmora-train --help; docs/training.md.
//
// Exit status: 0 done, 1 failure, 2 wrong command line, 128 + signal when interrupted. Tested by
// tests/program-test.cpp.
#include <cstdio>
#include <exception>

#include <Eigen/Core>

#include "interrupt.hpp"
#include "training.hpp"

int main(int argc, char** argv) {
  using namespace velmora::trainer;
  const ParsedOptions parsed = parse_options(argc, argv);
  if (parsed.exit_status) {
    return *parsed.exit_status;
  }
  // Eigen cuts matrix products to the caches it finds, and with the cuts the order of additions
  // changes. With fixed sizes a model comes out the same on every machine.
  Eigen::setCpuCacheSizes(32 * 1024, 512 * 1024, 4 * 1024 * 1024);
  watch_for_interrupts();
  try {
    if (parsed.options.stems_only.empty()) {
      train_model(parsed.options);
    } else {
      write_stems(parsed.options);
    }
    return 0;
  } catch (const Interrupted&) {
    std::fputs("velmora-train: interrupted before the output was written\n", stderr);
    return 128 + interrupting_signal();
  } catch (const std::bad_alloc&) {
    std::fputs("velmora-train: not enough memory\n", stderr);
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "velmora-train: %s\n", failure.what());
  }
  return 1;
}
