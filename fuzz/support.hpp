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

/// The files that an input consists of.
using Sections = std::vector<std::string>;

/// Cuts an input at lines "--" into `count` sections. The last one takes the rest.
Sections sections_of(const std::string& input, std::size_t count);

/// False for a model that takes long and shows nothing new.
///
/// model, factors   contents of the files "model" and "model.conf"
bool is_small_model(const std::string& model, const std::string& factors);

}  // namespace fuzz
