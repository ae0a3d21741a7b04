// From word ids to weights, and from weights to a term matrix: both steps, for hosts that take them
// together. Tested by tests/text/text-tables-test.cpp.
#pragma once

#include <velmora/term-matrix.hpp>
#include <velmora/tfidf.hpp>
