// The cosine without the copies that its published signature asks for.
//
// Used wherever the library compares two vectors one at a time; many rows against one query go
// through src/ranking/scoring.hpp. Not installed. Tested by tests/offline/offline-test.cpp.
#pragma once

#include <vector>

namespace VX::Dialog::detail {

/// What VX::Dialog::cosine gives.
double cosine_of(const std::vector<double>& first, const std::vector<double>& second);

}  // namespace VX::Dialog::detail
