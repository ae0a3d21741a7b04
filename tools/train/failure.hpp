// How the trainer gives up: one exception for everything that a user has to hear of.
//
// Used by every stage, caught once, in main.cpp, where the text becomes the message on standard
// error and the exit status 1. What is half done on the way is undone by destructors
// (output-directory.hpp, output-file.hpp). Tested by tools/train/tests/program-test.cpp.
#pragma once

#include <stdexcept>

namespace velmora::trainer {

/// The text is a whole message: what went wrong, with the file and line where there is one.
struct Failure : std::runtime_error {
  using std::runtime_error::runtime_error;
};

}  // namespace velmora::trainer
