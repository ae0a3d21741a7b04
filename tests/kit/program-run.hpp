// Runs programs on small data in a folder of their own.
//
// Used by the tests of tools/velmora and tools/evaluate.
#pragma once

#include <sys/wait.h>

#include <cstdlib>

#include "fixtures.hpp"

struct ProgramResult {
  int status = -1;
  std::string out;
  std::string err;
};

/// A folder that lives as long as the object, with a model of four words: lamp and light have one
/// direction in two dimensions, music and song the other.
class Workplace : public test::TemporaryFolder {
 public:
  Workplace() {
    write("enu/model/dictionary", "lamp\nlight\nmusic\nsong\n");
    write("enu/model/idf", "0 1\n1 1\n2 1\n3 1\n");
    write("enu/model/model", "2\n1\n0\n");
    write("enu/model/model.conf", "4 2\n1 0\n1 0\n0 1\n0 1\n");
  }

  /// Runs a program in the folder.
  ProgramResult run(const std::string& program, const std::string& arguments,
                    const std::string& input) const {
    write("input", input);
    const std::string command =
        "cd '" + path() + "' && '" + program + "' " + arguments + " <input >output 2>errors";
    const int status = std::system(command.c_str());
    return {WEXITSTATUS(status), read("output"), read("errors")};
  }
};
