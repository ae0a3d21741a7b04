// Starts a published matcher from a snapshot of the user's choice of name, and keeps it up to date.
//
// The library saves snapshots under two names of its own and does not say when that failed; a user
// names one file and wants it to be there, whole and current after each start. Used by
// `velmora match --published`; tested by tools/velmora/tests/published-test.cpp.
#pragma once

#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <velmora/velmora.hpp>

#include "published-model.hpp"

/// Compiles rules, with the elapsed time on a terminal. Throws std::runtime_error when it fails.
void compile_rules(VX::Dialog::Velmora& matcher,
                   const std::map<int, std::vector<std::string>>& rules);

/// Whether a file holds a snapshot that nothing cut short: records of four lines, the last one with
/// its newline, with equally many values each. With `rule_count` above 0 it must also name that
/// many rules.
bool is_whole_snapshot(const std::filesystem::path& path, std::size_t rule_count = 0);

/// Loads the rules into `matcher` from the snapshot `path`, or compiles them when it is not there,
/// damaged or older than the model beside it, and keeps the result as `path`. Tells on standard
/// error which it was, how long it took, and why the snapshot could not be kept. Throws
/// std::runtime_error when the rules could not be loaded.
///
/// model   what setModel was given, made with keep_snapshots
void start_from_snapshot(VX::Dialog::Velmora& matcher,
                         const std::map<int, std::vector<std::string>>& rules,
                         const PublishedModel& model, const std::filesystem::path& path);
