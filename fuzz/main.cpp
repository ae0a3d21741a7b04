// The entry points that the fuzzer looks for; compiled once for each harness, with the name of the
// function that takes the inputs. Run by scripts/fuzz.
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <string>

#include <zu/log.hpp>

namespace fuzz {
void VELMORA_FUZZ_FUNCTION(const std::string& input);
}

// A header may promise more than there is memory, and std::bad_alloc is the documented outcome: an
// allocation beyond the limit fails, and that is not a finding.
extern "C" const char* __asan_default_options() {
  return "allocator_may_return_null=1:max_allocation_size_mb=64";
}

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/) {
  // Messages are still built, but not printed.
  zu::log::setConsole(false);
  std::cout.setstate(std::ios::failbit);
  std::cerr.setstate(std::ios::failbit);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::VELMORA_FUZZ_FUNCTION({reinterpret_cast<const char*>(data), size});
  return 0;
}
