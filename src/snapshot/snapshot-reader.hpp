// Reads snapshot files: stem set to stored latent vector.
//
// Used by the index load and the merge load. A snapshot is a run of four-line records
// (docs/file-formats.md). Only the first line of a record can end the reading, so a file cut short
// still gives an entry for its last record. Not installed. Tested by
// tests/snapshot/snapshot-test.cpp.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "../text/stem-set.hpp"

namespace VX::Dialog::detail {

/// Stem set to stored latent vector.
using Snapshot = std::map<StemSet, std::vector<double>>;

/// A file that cannot be opened gives an empty map. Of two records with the same stems the later
/// one wins.
Snapshot read_snapshot(const std::string& path);

}  // namespace VX::Dialog::detail
