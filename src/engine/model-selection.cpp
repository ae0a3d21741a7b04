#include "model-selection.hpp"

#include <velmora/dictionary.hpp>
#include <zu/path.hpp>

#include "../latent/fold-in.hpp"
#include "../support/log-site.hpp"
#include "../support/model-files.hpp"
#include "../support/path-exists.hpp"

namespace VX::Dialog::detail {

namespace {

// A plain file at the language path will do as well, although the path ends in a slash.
bool root_exists(std::string root) {
  while (root.size() > 1 && root.back() == '/') {
    root.pop_back();
  }
  return path_exists(root);
}

}  // namespace

bool select_model(EngineState& engine, const Reporting& reporting, const std::string& path,
                  const std::string& language) {
  engine.fLanguage = language;  // stays even when no model is found
  const std::string own_root = path + "/" + engine.fLanguage + "/";
  if (root_exists(own_root)) {
    engine.fModelRoot = own_root;
  } else {
    const std::string default_root =
        zu::path::findData("dialog", "velmora/data/" + engine.fLanguage + "/", false);
    if (!root_exists(default_root)) {
      VELMORA_LOG(reporting.log, zu::log::Level::error, "xSetModel")
          << "SetModel(): Semantic model file not found: " << default_root;
      return false;
    }
    engine.fModelRoot = default_root;
    VELMORA_LOG(reporting.log, zu::log::Level::info, "xSetModel")
        << "SetModel(): " << own_root << " not found  using default model " << default_root;
  }
  engine.fModelDir = engine.fModelRoot + kModelFolder;
  engine.fModelFile = engine.fModelDir + kModelFile;
  engine.fIdfFile = engine.fModelDir + kIdfFile;
  engine.fDictionaryFile = engine.fModelDir + kDictionaryFile;
  // A model that can't be read is reported by the log and by matching, not here.
  (void)load_semantic_models(engine);
  return true;
}

bool load_semantic_models(EngineState& engine) {
  engine.fVocab.clear();
  engine.fVocab = get_word_ids(engine.fDictionaryFile);
  engine.fIdf.clear();
  engine.fIdf = load_idf(engine.fIdfFile);
  if (!read_wordsense_model(engine.fModelFile, engine.fModel)) {
    return false;
  }
  engine.fModelGram = compute_word_gram(engine.fModel);
  engine.fGramInverse = GramInverse(engine.fModelGram, engine.fModel.lambda);
  return true;
}

}  // namespace VX::Dialog::detail
