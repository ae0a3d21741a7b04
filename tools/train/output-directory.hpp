// The model directory: filled beside its place and given its name when it is whole.
//
// Until then everything lies in "<directory>.partial-XXXXXX", which nothing takes for a model and
// which goes away with the object. What a killed run leaves is cleared by the next run to the same
// place: such a directory holds a mark, and no living process holds a lock on it. Nothing is
// deleted but files of a model, by name. Used by training.cpp. Tested by
// tools/train/tests/program-test.cpp.
#pragma once

#include <filesystem>

#include "descriptor.hpp"

namespace velmora::trainer {

class OutputDirectory {
 public:
  /// Makes the parents of `directory` that are missing. Throws Failure when `directory` can't be
  /// made, or holds something and may not be replaced. With replace, a directory that holds nothing
  /// but a model and its snapshots gives way.
  OutputDirectory(const std::filesystem::path& directory, bool replace);
  /// Removes what was not published.
  ~OutputDirectory();
  OutputDirectory(const OutputDirectory&) = delete;
  OutputDirectory& operator=(const OutputDirectory&) = delete;

  /// Where to write.
  const std::filesystem::path& path() const { return partial_; }

  /// Brings all files to the disk and gives the directory its name, in one step where the file
  /// system can exchange two directories. Throws Failure when that fails, or when something that
  /// may not be replaced has appeared in the meantime.
  void publish();

 private:
  void replace_model();
  // For file systems that can't exchange. A kill between the steps leaves the former model as
  // "<directory>.replaced-XXXXXX".
  void replace_in_two_steps();

  std::filesystem::path directory_;
  bool replace_;
  std::filesystem::path partial_;
  // Held as long as the object lives.
  Descriptor lock_;
  bool published_ = false;
};

}  // namespace velmora::trainer
