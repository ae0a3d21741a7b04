// Runs programs in a folder of their own.
//
// Used by the tests of the programs in tools/.
#pragma once

#include <sys/wait.h>

#include <cstdlib>

#include "fixtures.hpp"

struct ProgramResult {
  /// Exit status; -1 when the program was ended by a signal.
  int status = -1;
  std::string out;
  std::string err;
};

/// Runs a command line of the shell in `folder`, and leaves nothing there but what it makes itself.
/// A redirection of the command's own counts.
inline ProgramResult run_program(const test::TemporaryFolder& folder, const std::string& command,
                                 const std::string& input = "") {
  const test::TemporaryFolder streams;
  streams.write("in", input);
  const int status =
      std::system(("cd '" + folder.path() + "' && {\n" + command + "\n} <" + streams.path("in") +
                   " >" + streams.path("out") + " 2>" + streams.path("err"))
                      .c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, streams.read("out"), streams.read("err")};
}

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
    return run_program(*this, "'" + program + "' " + arguments, input);
  }
};
