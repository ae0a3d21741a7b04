#include <velmora/topic-model.hpp>

#include "../engine/velmora-private.hpp"
#include "../support/tables.hpp"

namespace VX::Dialog {

using detail::MatchList;
using detail::RuleTable;

TopicModel::TopicModel(std::string language, RuleTable topics)
    : engine_(std::make_unique<VelmoraPrivate>(language)) {
  engine_->fRuleIndex.trust_tables();
  // A folder of this name in the working directory comes before the installed data.
  std::string path = "topicmodel.txt";
  (void)engine_->xSetModel(path, language);
  // Loads the model once more; a topic model that can't be set up answers -1.
  (void)engine_->xLoadSemanticModels();
  (void)engine_->xLoadDialogVectors(topics);
  engine_->xActiveAllRules();
}

TopicModel::~TopicModel() = default;

int TopicModel::matchInput(const std::string sentence, MatchList& matches,
                           std::string& /*ignored*/) {
  return engine_->xMatchInput(sentence, matches);
}

}  // namespace VX::Dialog
