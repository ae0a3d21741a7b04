// The prompt of `velmora match`: sentences, and commands that begin with a colon.
//
// Tested by tools/velmora/tests/commands-test.cpp.
#pragma once

#include "session.hpp"

/// Answers what is typed until the user ends it. Throws std::runtime_error when the answers can't
/// be printed.
void run_prompt(MatchSettings settings, Session session);
