// `velmora serve`: the workbench in a browser, and its HTTP interface. Tested by
// tools/velmora/tests/serve_transport_test.py and browser_test.py.
#include <iostream>
#include <memory>
#include <optional>

#include "command-line.hpp"
#include "commands.hpp"
#include "dialogue.hpp"
#include "messages.hpp"
#include "serve/http-server.hpp"

namespace {

constexpr const char* kDescription =
    "Serves a page for dialogue authors, and the HTTP interface that it uses (described at\n"
    "/openapi.yaml). The page ranks while you type, shows why, draws a map of all sentences,\n"
    "compares the rules, and shows how expectations fare. Files are read again when they change.\n"
    "Ctrl-C ends it.";

struct ServeSettings {
  DialogueOptions dialogue;
  std::string expectations;
  serve::ServerOptions server;
};

bool is_loopback(const std::string& host) {
  return host == "localhost" || host == "::1" || host.rfind("127.", 0) == 0;
}

int serve_dialogue(const ServeSettings& settings) {
  serve::DialogueFiles files{settings.dialogue.rules, std::nullopt};
  if (!settings.expectations.empty()) {
    files.expectations = settings.expectations;
  }
  if (!is_loopback(settings.server.host)) {
    warn("listening on " + settings.server.host +
         ": whoever reaches this machine can read the rules");
  }
  serve::Workbench workbench(open_model(settings.dialogue), std::move(files));
  serve::serve_until_stopped(workbench, settings.server, [&](int port) {
    std::cout << "http://" << settings.server.host << ":" << port << "/  (Ctrl-C ends the server)"
              << std::endl;
  });
  return 0;
}

}  // namespace

void add_serve_command(CLI::App& program, Action& action) {
  const auto settings = std::make_shared<ServeSettings>();
  CLI::App* command = program.add_subcommand("serve", kDescription);
  add_dialogue_options(*command, settings->dialogue)->required();
  command
      ->add_option("--expect", settings->expectations,
                   "Expectations: \"id<TAB>sentence\" lines, or \"-<TAB>sentence\" where no\n"
                   "rule should answer")
      ->option_text("FILE");
  command
      ->add_option("--host", settings->server.host,
                   "Address to listen on (default: 127.0.0.1); any but loopback lets\n"
                   "other machines in")
      ->option_text("ADDRESS");
  command
      ->add_option("--port", settings->server.port,
                   "Port to listen on (default: 8765); 0 for any free one")
      ->option_text("N")
      ->check(number_between(0, 65535));
  command->callback(
      [&action, settings] { action = [settings] { return serve_dialogue(*settings); }; });
}
