// Expectations files. Tested by tests/matcher/files-test.cpp.
#include <velmora/evaluation.hpp>

#include "input-file.hpp"

namespace velmora {

namespace {

constexpr std::string_view kNoRule = "-";

std::string expected_id_fault(std::string_view id) {
  if (id == kNoRule || detail::int_of(id)) {
    return "";
  }
  return "'" + std::string(id) +
         "' before the tab: expected a rule id, a whole number of 32 bits, or - for no rule";
}

}  // namespace

std::vector<Expectation> read_expectations(const std::filesystem::path& path) {
  std::vector<Expectation> expectations;
  for (detail::IdLine& line : detail::read_id_lines(path, expected_id_fault)) {
    expectations.push_back({detail::int_of(line.id), std::move(line.sentence), line.line});
  }
  return expectations;
}

}  // namespace velmora
