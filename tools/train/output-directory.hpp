// The model directory: filled beside its place and renamed when it is whole.
//
// Until then everything lies in "<directory>.partial-XXXXXX", which nothing takes for a model and
// which goes away with the object. Used by training.cpp. Tested by tests/program-test.cpp.
#pragma once

#include <filesystem>

namespace velmora::trainer {

class OutputDirectory {
 public:
  /// Throws Failure when `directory` can't be made, or holds something and may not be replaced.
  /// With replace, a directory that holds nothing but a model and its snapshots gives way.
  OutputDirectory(const std::filesystem::path& directory, bool replace);
  /// Removes what was not published.
  ~OutputDirectory();
  OutputDirectory(const OutputDirectory&) = delete;
  OutputDirectory& operator=(const OutputDirectory&) = delete;

  /// Where to write.
  const std::filesystem::path& path() const { return partial_; }

  /// Brings all files to the disk and gives the directory its name. Throws Failure.
  void publish();

 private:
  std::filesystem::path directory_;
  std::filesystem::path partial_;
  bool published_ = false;
};

}  // namespace velmora::trainer
