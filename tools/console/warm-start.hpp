// Starts a matcher from a snapshot of the user's choice of name.
//
// The library writes snapshots under two names of its own: "newindex" after a compilation, "index"
// after a load that compiled what was new. A user names one file and wants it to be there and up to
// date after each start. Used by velmora-console; tested by tools/console/tests/console-test.cpp.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <velmora/velmora.hpp>

/// Loads the rules into `matcher` from snapshot `name` in `model_directory`, or compiles them when
/// it is not there or older than the model, and keeps the result as `name`. Tells on standard error
/// which it was, how long it took, and when the snapshot could not be kept. False: not loaded.
bool start_from_snapshot(VX::Dialog::Velmora& matcher,
                         const std::map<int, std::vector<std::string>>& rules,
                         const std::string& model_directory, const std::string& name);
