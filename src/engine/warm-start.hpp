// Warm start: rule vectors from a snapshot instead of from inference.
//
// The index load keeps rules whose stem set the snapshot has and ignores the others; the merge load
// compiles the others too and saves all as "index". Used by both private engines. Not installed.
// Tested by tests/engine/warm-start-test.cpp.
#pragma once

#include <string>

#include "engine-state.hpp"

namespace VX::Dialog::detail {

/// Loads from the file `name` in the model directory. False, with nothing but the stemmer renewed,
/// when there is none. Throws boost::filesystem::filesystem_error when the file system can't tell,
/// and what write_ls throws while a merge is saved.
bool load_from_file(EngineState& engine, const Reporting& reporting, const std::string& name,
                    RuleTable rules, bool compile_new_rules);

/// The index load: replaces `vectors` and the rule tables of the engine; of several rules with one
/// stem set only the lowest id stays.
void load_snapshot_index(EngineState& engine, const Reporting& reporting, const std::string& path,
                         VectorTable& vectors, const RuleTable& rules, Stemmer& stemmer);

/// The merge load: replaces `vectors` and the rule tables of the engine with those of all rules
/// that have a known stem. Empties `rules`.
void load_snapshot_merge(EngineState& engine, const Reporting& reporting, const std::string& path,
                         VectorTable& vectors, RuleTable& rules, Stemmer& stemmer);

}  // namespace VX::Dialog::detail
