// Which model directory an engine uses, and loading it.
//
// Used by both private engines. Not installed. Tested by tests/engine/model-selection-test.cpp.
#pragma once

#include <string>

#include "engine-state.hpp"

namespace VX::Dialog::detail {

/// Selects <path>/<language>/ or, failing that, the installed data, and loads the model there.
/// False when there is neither; only fLanguage has changed then.
bool select_model(EngineState& engine, const Reporting& reporting, const std::string& path,
                  const std::string& language);

/// Reads dictionary, idf table and model, in this order. False when the scalar file of the model
/// can't be opened; the tables are replaced all the same, model and gram are not.
bool load_semantic_models(EngineState& engine);

}  // namespace VX::Dialog::detail
