// What the harnesses share: a folder for the files that readers read, and checks.
#pragma once

#include <string>
#include <vector>

#include "kit/fixtures.hpp"

namespace fuzz {

/// One folder for the whole run. scripts/fuzz puts it into memory and takes it away afterwards.
const test::TemporaryFolder& folder();

/// Ends the run, and so makes the input a finding, when `holds` is false.
void require(bool holds, const char* what);

/// The lines of a text, as std::getline gives them.
std::vector<std::string> lines_of(const std::string& text);

}  // namespace fuzz
