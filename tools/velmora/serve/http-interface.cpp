#include "http-interface.hpp"

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <string_view>

#include <nlohmann/json.hpp>

#include "page-files.hpp"

namespace serve {

namespace {

using nlohmann::json;

constexpr const char* kJson = "application/json; charset=utf-8";

/// A request that can't be answered as it is, with the status that says so.
struct BadRequest {
  int status;
  std::string text;
};

Reply json_reply(const json& body) {
  // Rules and sentences are checked UTF-8; what a stemmer cuts out of them is replaced if it is
  // not.
  return {200, kJson, body.dump(-1, ' ', false, json::error_handler_t::replace)};
}

json parse_object(const Request& request) {
  if (request.body.size() > kLargestBody) {
    throw BadRequest{413, "the body has more than " + std::to_string(kLargestBody) + " bytes"};
  }
  json body = json::parse(request.body, nullptr, /*allow_exceptions=*/false);
  if (body.is_discarded()) {
    throw BadRequest{400, "the body is not JSON"};
  }
  if (!body.is_object()) {
    throw BadRequest{400, "the body is not a JSON object"};
  }
  return body;
}

std::string sentence_of(const json& body) {
  const auto found = body.find("sentence");
  if (found == body.end() || !found->is_string()) {
    throw BadRequest{400, "\"sentence\" must be a string"};
  }
  std::string sentence = found->get<std::string>();
  if (sentence.size() > kLongestSentence) {
    throw BadRequest{400,
                     "\"sentence\" has more than " + std::to_string(kLongestSentence) + " bytes"};
  }
  return sentence;
}

int integer_of(const json& value, const std::string& what, int lowest, int highest) {
  // What no 64-bit integer holds is a float to the parser, or above all of them.
  const bool in_range = value.is_number_integer() && value <= highest && value >= lowest;
  if (!in_range) {
    throw BadRequest{400, what + " must be a whole number from " + std::to_string(lowest) + " to " +
                              std::to_string(highest)};
  }
  return value.get<int>();
}

velmora::MatchOptions match_options(const json& body) {
  constexpr int kMostMatches = 100;
  velmora::MatchOptions options;
  if (const auto top = body.find("top"); top != body.end()) {
    options.top = static_cast<std::size_t>(integer_of(*top, "\"top\"", 1, kMostMatches));
  }
  if (const auto threshold = body.find("threshold"); threshold != body.end()) {
    if (!threshold->is_number()) {
      throw BadRequest{400, "\"threshold\" must be a number"};
    }
    options.threshold = threshold->get<double>();
  }
  return options;
}

json match(const json& body, Workbench& workbench) {
  return workbench.match(sentence_of(body), match_options(body));
}

json explain(const json& body, Workbench& workbench) {
  const auto id = body.find("id");
  if (id == body.end()) {
    throw BadRequest{400, "\"id\" must be the id of a rule"};
  }
  const int rule_id =
      integer_of(*id, "\"id\"", std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
  std::optional<json> explanation = workbench.explain(sentence_of(body), rule_id);
  if (!explanation) {
    throw BadRequest{404, "there is no rule " + std::to_string(rule_id)};
  }
  return *std::move(explanation);
}

json place(const json& body, Workbench& workbench) {
  return workbench.place(sentence_of(body));
}

json evaluation(Workbench& workbench) {
  std::optional<json> result = workbench.evaluation();
  if (!result) {
    throw BadRequest{404, "there are no expectations: start with --expect FILE"};
  }
  return *std::move(result);
}

struct Question {
  const char* path;
  json (*answer)(Workbench&);
};

const std::array kQuestions = {
    Question{"/api/status", [](Workbench& workbench) { return workbench.status(); }},
    Question{"/api/rules", [](Workbench& workbench) { return workbench.rules(); }},
    Question{"/api/map", [](Workbench& workbench) { return workbench.map(); }},
    Question{"/api/closeness", [](Workbench& workbench) { return workbench.closeness(); }},
    Question{"/api/lint", [](Workbench& workbench) { return workbench.findings(); }},
    Question{"/api/evaluation", evaluation},
};

struct Command {
  const char* path;
  json (*answer)(const json& body, Workbench&);
};

const std::array kCommands = {
    Command{"/api/match", match},
    Command{"/api/explain", explain},
    Command{"/api/place", place},
};

template <typename Table>
auto find_path(const Table& table, const std::string& path) {
  return std::find_if(table.begin(), table.end(),
                      [&](const auto& entry) { return path == entry.path; });
}

bool is_json(std::string_view content_type) {
  constexpr std::string_view kType = "application/json";
  return content_type.substr(0, kType.size()) == kType &&
         (content_type.size() == kType.size() || content_type[kType.size()] == ';' ||
          content_type[kType.size()] == ' ');
}

std::string to_lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

// "name:port" of this server, in any case of letters; a browser leaves port 80 out.
bool names_this_server(const std::string& authority, const Address& address) {
  const std::string name_and_port = to_lower(authority);
  const std::string port = ":" + std::to_string(address.port);
  for (const std::string& name : {std::string("localhost"), std::string("127.0.0.1"),
                                  std::string("[::1]"), to_lower(address.host)}) {
    if (name_and_port == name + port || (address.port == 80 && name_and_port == name)) {
      return true;
    }
  }
  return false;
}

Reply answer(const Request& request, Workbench& workbench) {
  const bool reads = request.method == "GET" || request.method == "HEAD";
  if (const PageFile* file = find_page_file(request.path)) {
    return reads ? Reply{200, file->content_type, std::string(file->content)}
                 : error_reply(405, "this path is for GET");
  }
  if (const auto question = find_path(kQuestions, request.path); question != kQuestions.end()) {
    return reads ? json_reply(question->answer(workbench))
                 : error_reply(405, "this path is for GET");
  }
  const auto command = find_path(kCommands, request.path);
  if (command == kCommands.end()) {
    return error_reply(404, "there is nothing at this path; see /openapi.yaml");
  }
  if (request.method != "POST") {
    return error_reply(405, "this path is for POST");
  }
  if (!is_json(request.content_type)) {
    return error_reply(415, "the body must be of type application/json");
  }
  return json_reply(command->answer(parse_object(request), workbench));
}

}  // namespace

Reply error_reply(int status, const std::string& text) {
  const json body = {{"error", text}};
  return {status, kJson, body.dump(-1, ' ', false, json::error_handler_t::replace)};
}

Reply refusal(const Request& request, const Address& address) {
  if (!names_this_server(request.host, address)) {
    return error_reply(403, "the Host header does not name this server");
  }
  constexpr std::string_view kScheme = "http://";
  if (!request.origin.empty() &&
      (request.origin.rfind(kScheme, 0) != 0 ||
       !names_this_server(request.origin.substr(kScheme.size()), address))) {
    return error_reply(403, "requests from pages of other sites are refused");
  }
  if (!request.transfer_encoding.empty()) {
    return error_reply(411, "a body needs a Content-Length");
  }
  if (!request.content_encoding.empty()) {
    return error_reply(415, "a body must not be compressed");
  }
  return {0, "", ""};
}

Reply reply_to(const Request& request, Workbench& workbench) {
  try {
    return answer(request, workbench);
  } catch (const BadRequest& bad) {
    return error_reply(bad.status, bad.text);
  }
}

}  // namespace serve
