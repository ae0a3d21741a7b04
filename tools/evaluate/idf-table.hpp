// The idf of every word of a model.
//
// Used by the tf-idf contender and the word overlap; tested by
// tools/evaluate/tests/evaluate-test.cpp.
#pragma once

#include <map>
#include <string>

#include <velmora/model.hpp>

/// By stem.
std::map<std::string, double> idf_table(const velmora::Model& model);
