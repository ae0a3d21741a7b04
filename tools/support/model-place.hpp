// Where the model of a language lies, found the way the library looks for it.
//
// A program needs the place itself to read the dictionary, to keep snapshots, and to tell its user
// which model answers. Used by velmora-console and velmora-evaluate; tested by
// tools/console/tests/console-test.cpp.
#pragma once

#include <string>

struct ModelPlace {
  /// What to hand to setModel as path: <base>/<language>/ exists.
  std::string base;
  /// <base>/<language>/model/
  std::string directory;
};

/// Finds the model below `base`, or among the installed data when `base` is empty or has no folder
/// of the language; the second case is told on standard error. False, with the places looked at on
/// standard error, when there is no complete model.
bool find_model(const std::string& base, const std::string& language, ModelPlace& place);
