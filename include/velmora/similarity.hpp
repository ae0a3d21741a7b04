// The similarity measure of the whole system. Tested by tests/offline/offline-test.cpp.
#pragma once

#include <string>
#include <vector>

#include <velmora/export.hpp>

namespace VX::Dialog {

/// Cosine of two vectors over the length of the first: the dot product divided by the norm of the
/// first and then by the norm of the second, each sum in index order. Exactly 0 for an empty first
/// vector, for a dot product of 0, and for a second vector that is shorter. Not clamped: rounding
/// can lead a little beyond 1 or -1.
VELMORA_EXPORT double cosine(std::vector<double> first, std::vector<double> second);

/// Reads vectors two by two and writes the cosine of each pair, 15 significant digits, one a line.
///
/// input_path    vector pairs file; its first line is skipped
/// output_path   truncated; failures are not reported
///
/// Writes a banner to standard output. Of an odd number of vectors the last is compared with an
/// empty one, or with itself when the file does not end with a newline.
VELMORA_EXPORT void get_sim(std::string input_path, std::string output_path);

/// Prints the size, and below it the elements, each followed by a blank.
VELMORA_EXPORT void print_vec(std::vector<double> vector);

}  // namespace VX::Dialog
