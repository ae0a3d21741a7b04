// A model of the second front door that is small enough to read.
//
// Used by the tests in tests/matcher and by tests/robustness/threads-test.cpp.
#pragma once

#include <velmora/error.hpp>
#include <velmora/model.hpp>

#include "fixtures.hpp"

namespace test {

/// Writes <folder>/model with four words in two dimensions; lambda and missing_weight are 0.5.
///
///   word    idf   factors
///   go        2   1 0
///   stop      1   0 1
///   up      0.5   1 1
///   walk      4   -1 0.5
inline std::string write_small_model(const TemporaryFolder& folder) {
  folder.write("model/dictionary", "go\nstop\nup\nwalk\n");
  folder.write("model/idf", "0 2\n1 1\n2 0.5\n3 4\n");
  folder.write("model/model", "2\n0.5\n0.5\n");
  folder.write("model/model.conf", "4 2\n1 0 \n0 1 \n1 1 \n-1 0.5 \n");
  return folder.path("model");
}

inline velmora::Model small_model() {
  const TemporaryFolder folder;
  return velmora::Model::load(write_small_model(folder), "enu");
}

/// The text of the velmora::Error that a call throws, without `folder`; "" when it throws none.
template <typename Call>
std::string error_of(const Call& call, const std::string& folder = "") {
  try {
    call();
  } catch (const velmora::Error& error) {
    std::string text = error.what();
    for (std::size_t at = text.find(folder + "/"); !folder.empty() && at != std::string::npos;
         at = text.find(folder + "/")) {
      text.erase(at, folder.size() + 1);
    }
    return text;
  }
  return "";
}

}  // namespace test
