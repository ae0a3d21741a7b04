// velmora-train: trains a latent model on text. Usage: velmora-train --help; docs/training.md.
//
// Exit status: 0 done, 1 failure, 2 wrong command line, 128 + signal when interrupted. Tested by
// tools/train/tests/program-test.cpp.
#include <cstdio>
#include <exception>

#include "../../src/latent/eigen-cache-sizes.hpp"
#include "interrupt.hpp"
#include "join.hpp"
#include "options.hpp"
#include "standard-output.hpp"
#include "training.hpp"

int main(int argc, char** argv) {
  using namespace velmora::trainer;
  prepare_standard_streams();
  try {
    const ParsedOptions parsed = parse_options(argc, argv);
    if (parsed.exit_status) {
      flush_output();
      return *parsed.exit_status;
    }
    VX::Dialog::detail::fix_eigen_cache_sizes();
    watch_for_interrupts();
    const TrainingSettings& settings = parsed.options.training;
    if (!settings.join.empty()) {
      join_models(settings);
    } else if (parsed.options.stems_only.empty()) {
      train_model(settings);
    } else {
      write_stems(settings.corpus, parsed.options.stems_only, settings.progress);
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
