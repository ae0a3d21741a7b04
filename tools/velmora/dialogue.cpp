#include "dialogue.hpp"

#include <utility>

#include "progress.hpp"

CLI::Option* add_dialogue_options(CLI::App& command, DialogueOptions& options) {
  command
      .add_option("--language", options.language, "Language of rules and sentences (default: enu)")
      ->option_text("CODE");
  command
      .add_option("--model", options.model,
                  "Folder of the model, as velmora-train writes it\n(default: the installed model)")
      ->option_text("DIR");
  return command
      .add_option("--rules", options.rules, "Rules: \"id<TAB>sentence\" lines, several an id")
      ->option_text("FILE");
}

velmora::Model open_model(const DialogueOptions& options) {
  return options.model.empty() ? velmora::Model::installed(options.language)
                               : velmora::Model::load(options.model, options.language);
}

velmora::Matcher open_matcher(const DialogueOptions& options) {
  velmora::Model model = open_model(options);
  std::vector<velmora::Rule> rules = velmora::read_rules(options.rules);
  Progress progress("compiling the rules");
  return velmora::Matcher(std::move(model), std::move(rules), {},
                          [&](std::size_t done, std::size_t total) { progress.show(done, total); });
}
