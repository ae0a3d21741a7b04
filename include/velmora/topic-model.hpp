// A ready-made matcher over a fixed table of topics. Tested by tests/models/models-test.cpp.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <velmora/export.hpp>

namespace VX::Dialog {

class VelmoraPrivate;

/// One constructor call selects the language, loads the model, compiles the topics and activates
/// them all. To use other topics, construct another object. One thread at a time for each object.
class VELMORA_EXPORT TopicModel {
 public:
  /// language   a language code, for example "enu"
  /// topics     topic id to the sentences that describe it
  ///
  /// Reports nothing: without a model for the language every matchInput answers -1. The model is
  /// looked for in "topicmodel.txt/<language>/" of the working directory first, then among the
  /// installed data. Writes "newindex" into the model directory. Exceptions of loading and
  /// compilation pass through (see Velmora).
  TopicModel(std::string language, std::map<int, std::vector<std::string>> topics);
  ~TopicModel();
  TopicModel(const TopicModel&) = delete;
  TopicModel& operator=(const TopicModel&) = delete;

  /// As Velmora::matchInput, with topic ids; at most 11 entries are appended.
  int matchInput(const std::string sentence,
                 std::vector<std::pair<double, std::vector<int>>>& matches, std::string& ignored);

 private:
  std::unique_ptr<VelmoraPrivate> engine_;
};

}  // namespace VX::Dialog
