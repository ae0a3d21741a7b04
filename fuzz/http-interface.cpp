// The HTTP interface of `velmora serve` without its sockets: any request gets a reply that keeps
// its promises.
#include "http-interface.hpp"

#include <set>
#include <string>

#include <nlohmann/json.hpp>

#include <velmora/matcher.hpp>

#include "support.hpp"

namespace fuzz {

namespace {

serve::Workbench make_workbench() {
  test::write_model(folder());
  folder().write(test::kLanguage + "/model/idf", "0 2\n1 1\n2 0.5\n3 1\n");
  const std::string rules =
      folder().write("rules.tsv", "1\tgo up\n1\twalk\n2\tstop\n3\t<b>go</b>\n");
  const std::string expectations = folder().write("expect.tsv", "1\tgo\n2\tup\n-\twalk\n");
  return {velmora::Model::load(folder().path(test::kLanguage + "/model"), "enu"),
          {rules, expectations}};
}

// The text up to the next newline, which is cut off with it.
std::string take_line(std::string& text) {
  const std::size_t end = text.find('\n');
  std::string line = text.substr(0, end);
  text.erase(0, end == std::string::npos ? end : end + 1);
  return line;
}

bool is_promised(int status) {
  const std::set<int> promised = {200, 400, 403, 404, 405, 411, 413, 415};
  return promised.contains(status);
}

}  // namespace

// Input: a line each for method, path, Host, Origin and Content-Type, then the body.
void http_interface(const std::string& input) {
  static serve::Workbench workbench = make_workbench();
  std::string rest = input;
  serve::Request request;
  request.method = take_line(rest);
  request.path = take_line(rest);
  request.host = take_line(rest);
  request.origin = take_line(rest);
  request.content_type = take_line(rest);
  request.body = rest;

  serve::Reply reply = serve::refusal(request, {"127.0.0.1", 8765});
  if (reply.status == 0) {
    reply = serve::reply_to(request, workbench);
  }
  require(is_promised(reply.status), "a status that is documented");
  if (reply.content_type.rfind("application/json", 0) == 0) {
    const nlohmann::json body = nlohmann::json::parse(reply.body, nullptr, false);
    require(body.is_object(), "a JSON object");
    require(body.contains("error") == (reply.status != 200 || request.path == "/api/status"),
            "an error text where something is wrong");
  } else {
    require(reply.status == 200, "only files of the page are no JSON");
  }
}

}  // namespace fuzz
