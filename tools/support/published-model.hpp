// Lets the published classes load the model of any folder, without writing into it.
//
// VX::Dialog::Velmora looks for <base>/<language>/model/ and leaves a snapshot there whenever it
// compiles rules. A program is given the folder of the model itself, often one that it has no
// business writing to. Used by velmora and velmora-evaluate; tested by
// tools/velmora/tests/commands-test.cpp.
#pragma once

#include <filesystem>
#include <string>

class PublishedModel {
 public:
  /// Makes a temporary base directory whose model files are links to those in `directory`.
  ///
  /// keep_snapshots   false: what the library saves is dropped
  ///
  /// Throws std::filesystem::filesystem_error.
  PublishedModel(const std::filesystem::path& directory, const std::string& language,
                 bool keep_snapshots = false);
  /// Takes the temporary directory away.
  ~PublishedModel();
  PublishedModel(const PublishedModel&) = delete;
  PublishedModel& operator=(const PublishedModel&) = delete;

  /// What to hand to setModel as path.
  std::string base() const { return base_.string(); }
  /// <base>/<language>/model, where snapshots are read and written.
  std::filesystem::path directory() const { return directory_; }

 private:
  std::filesystem::path base_;
  std::filesystem::path directory_;
};
