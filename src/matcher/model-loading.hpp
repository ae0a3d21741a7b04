// Reads the four files of a model, strictly.
//
// Not installed. Tested by tests/matcher/model-test.cpp.
#pragma once

#include "model-data.hpp"

namespace velmora::detail {

/// Fills the tables of `model` from the folder that model.directory names. Throws Error as
/// Model::load tells.
void load_tables(ModelData& model);

}  // namespace velmora::detail
