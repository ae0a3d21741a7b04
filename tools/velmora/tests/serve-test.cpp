// What `velmora serve` answers, without sockets: who is let in, which requests are refused, and
// what the workbench says of a dialogue small enough to know its answers.
#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <velmora/error.hpp>
#include <velmora/matcher.hpp>

#include "closeness.hpp"
#include "http-interface.hpp"
#include "kit/fixtures.hpp"
#include "page-files.hpp"
#include "sentence-map.hpp"

namespace {

using nlohmann::json;
using ::testing::ElementsAre;
using ::testing::HasSubstr;

const serve::Address kAddress{"192.0.2.7", 8765};

TEST(Refusal, LetsInOnlyWhoNamesThisServer) {
  struct Case {
    const char* what;
    serve::Request request;
    int status;  // 0: let in
  };
  const auto from = [](std::string host, std::string origin = "") {
    serve::Request request;
    request.host = std::move(host);
    request.origin = std::move(origin);
    return request;
  };
  const auto with_header = [&](std::string serve::Request::*header, std::string value) {
    serve::Request request = from("localhost:8765");
    request.*header = std::move(value);
    return request;
  };
  const Case cases[] = {
      {"name", from("localhost:8765"), 0},
      {"capitals", from("LocalHost:8765"), 0},
      {"loopback address", from("127.0.0.1:8765"), 0},
      {"the same of version 6", from("[::1]:8765"), 0},
      {"the address that it was told to listen on", from("192.0.2.7:8765"), 0},
      {"a name that somebody points at loopback", from("elsewhere.example:8765"), 403},
      {"a name that begins like ours", from("localhost.elsewhere.example:8765"), 403},
      {"another port", from("localhost:80"), 403},
      {"no port, which means 80", from("localhost"), 403},
      {"no host", from(""), 403},
      {"its own page", from("localhost:8765", "http://localhost:8765"), 0},
      {"a page of another site", from("localhost:8765", "http://elsewhere.example"), 403},
      {"a page of another port", from("localhost:8765", "http://localhost:80"), 403},
      {"a page without an origin", from("localhost:8765", "null"), 403},
      {"a body in chunks", with_header(&serve::Request::transfer_encoding, "chunked"), 411},
      {"a compressed body", with_header(&serve::Request::content_encoding, "gzip"), 415},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(serve::refusal(c.request, kAddress).status, c.status) << c.what;
  }
}

// Rules 1 and 2 share a word; 2 and 3 are closest in the latent space all the same.
constexpr const char* kRules = "1\tgo up\n1\tgo\n2\tup\n3\tstop\n";
constexpr const char* kExpectations = "1\tgo up\n3\tup\n-\twalk\n";

class Workbench : public ::testing::Test {
 protected:
  Workbench() {
    test::write_model(folder_);
    folder_.write(test::kLanguage + "/model/idf", "0 2\n1 1\n2 0.5\n3 1\n");
    model_.emplace(velmora::Model::load(folder_.path(test::kLanguage + "/model"), "enu"));
    files_.rules = folder_.write("rules.tsv", kRules);
    files_.expectations = folder_.write("expect.tsv", kExpectations);
  }

  serve::Reply ask(const std::string& method, const std::string& path,
                   const std::string& body = "") {
    serve::Request request;
    request.method = method;
    request.path = path;
    request.content_type = "application/json";
    request.body = body;
    if (!workbench_) {
      workbench_.emplace(*model_, files_);
    }
    return serve::reply_to(request, *workbench_);
  }
  json get(const std::string& path) { return json::parse(ask("GET", path).body); }
  json post(const std::string& path, const json& body) {
    return json::parse(ask("POST", path, body.dump()).body);
  }

  test::TemporaryFolder folder_;
  std::optional<velmora::Model> model_;
  serve::DialogueFiles files_;
  std::optional<serve::Workbench> workbench_;
};

TEST_F(Workbench, RefusesWhatItCannotAnswer) {
  struct Case {
    const char* method;
    const char* path;
    std::string body;
    int status;
    const char* error;
  };
  const std::string long_sentence(serve::kLongestSentence + 1, 'x');
  const Case cases[] = {
      {"GET", "/api", "", 404, "nothing at this path"},
      {"GET", "/page/app.js", "", 404, "nothing at this path"},
      {"PUT", "/api/rules", "", 405, "GET"},
      {"GET", "/api/place", "", 405, "POST"},
      {"POST", "/app.js", "", 405, "GET"},
      {"POST", "/api/match", "", 400, "not JSON"},
      {"POST", "/api/match", "{\"sentence\": \"\xff\"}", 400, "not JSON"},
      {"POST", "/api/match", "\"go\"", 400, "not a JSON object"},
      {"POST", "/api/match", R"({"sentence": 1})", 400, "must be a string"},
      {"POST", "/api/match", json{{"sentence", long_sentence}}.dump(), 400, "more than 2000 bytes"},
      {"POST", "/api/match", R"({"sentence": "go", "top": 101})", 400, "from 1 to 100"},
      {"POST", "/api/match", R"({"sentence": "go", "top": 2.0})", 400, "whole number"},
      {"POST", "/api/match", R"({"sentence": "go", "top": 18446744073709551615})", 400, "1 to 100"},
      {"POST", "/api/match", R"({"sentence": "go", "threshold": "x"})", 400, "must be a number"},
      {"POST", "/api/explain", R"({"sentence": "go"})", 400, "id of a rule"},
      {"POST", "/api/explain", R"({"sentence": "go", "id": -2147483649})", 400, "whole number"},
      {"POST", "/api/explain", R"({"sentence": "go", "id": 4})", 404, "no rule 4"},
      {"POST", "/api/match", std::string(serve::kLargestBody + 1, ' '), 413, "more than"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.method) + " " + c.path + " " + c.body.substr(0, 60));
    const serve::Reply reply = ask(c.method, c.path, c.body);
    EXPECT_EQ(reply.status, c.status);
    EXPECT_THAT(json::parse(reply.body).at("error").get<std::string>(), HasSubstr(c.error));
  }
}

TEST_F(Workbench, MatchesAndExplains) {
  const json answer = post("/api/match", {{"sentence", "go zzz"}, {"top", 2}});
  EXPECT_EQ(answer["matches"][0]["id"], 1);
  EXPECT_EQ(answer["matches"][0]["text"], "go");
  EXPECT_EQ(answer["matches"].size(), 2U);
  EXPECT_THAT(answer["unknown"], ElementsAre("zzz"));
  EXPECT_EQ(answer["words"],
            json::parse(R"([{"text":"go","known":true},{"text":"zzz","known":false}])"));

  const json why = post("/api/explain", {{"sentence", "go zzz"}, {"id", 1}});
  double sum = 0.0;
  for (const json& pair : why["pairs"]) {
    sum += pair["latent"].get<double>() + pair["words"].get<double>() +
           pair["characters"].get<double>();
  }
  EXPECT_NEAR(sum, answer["matches"][0]["score"].get<double>(), 1e-12);
}

TEST_F(Workbench, ComparesRules) {
  const json closeness = get("/api/closeness");
  const json grid = closeness["grid"];
  ASSERT_EQ(grid.size(), 3U);
  EXPECT_EQ(grid[0][1], grid[1][0]);
  EXPECT_EQ(grid[2][2], 1.0);
  const json closest = closeness["pairs"][0];
  EXPECT_EQ(closest["first"]["id"], 2);
  EXPECT_EQ(closest["second"]["id"], 3);
  EXPECT_EQ(closest["cosine"], grid[1][2]);
  EXPECT_GT(grid[1][2], grid[0][1]);
  EXPECT_EQ(get("/api/map")["points"].size(), 4U);
}

TEST_F(Workbench, CountsWhatExpectationsMeet) {
  const json evaluation = get("/api/evaluation");
  EXPECT_EQ(evaluation["sentences"], 2);
  EXPECT_EQ(evaluation["out_of_place"], 1);
  EXPECT_EQ(evaluation["right"], 1);
  std::vector<std::string> outcomes;
  for (const json& answer : evaluation["answers"]) {
    outcomes.push_back(answer["outcome"]);
  }
  EXPECT_THAT(outcomes, ElementsAre("right", "wrong", "out_of_place"));
  EXPECT_EQ(evaluation["failures"][0]["line"], 2);
  EXPECT_EQ(evaluation["failures"][0]["wanted"], 3);
}

TEST_F(Workbench, HasNoEvaluationWithoutExpectations) {
  files_.expectations.reset();
  EXPECT_EQ(ask("GET", "/api/evaluation").status, 404);
  EXPECT_EQ(get("/api/status")["expectations"], false);
}

TEST_F(Workbench, RefusesFilesThatCannotBeUsed) {
  folder_.write("expect.tsv", "7\tgo\n");
  EXPECT_THROW(ask("GET", "/api/status"), velmora::Error) << "an id that is no rule";
  folder_.write("rules.tsv", "x\tgo\n");
  EXPECT_THROW(ask("GET", "/api/status"), velmora::Error);
}

TEST(PageFiles, AreEmbeddedByteForByte) {
  const std::filesystem::path page = PAGE_DIR;
  std::size_t count = 0;
  for (const auto& file : std::filesystem::directory_iterator(page)) {
    const std::string name = file.path().filename();
    const serve::PageFile* embedded =
        serve::find_page_file(name == "index.html" ? "/" : "/" + name);
    ASSERT_NE(embedded, nullptr) << name;
    std::ifstream in(file.path(), std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(in), {}};
    EXPECT_EQ(embedded->content, content) << name;
    ++count;
  }
  EXPECT_GT(count, 5U);
}

TEST(SentenceMap, ShowsWhereVectorsDifferMost) {
  Eigen::MatrixXd vectors(3, 4);
  // The first coordinate differs most, then the second; the last column is no sentence.
  vectors << 4, -4, 0, 0,  //
      1, 1, -2, 0,         //
      5, 5, 5, 0;
  const serve::SentenceMap map(vectors);
  EXPECT_NEAR(map.place(vectors.col(0))->x, 1.0, 1e-12);
  EXPECT_NEAR(map.place(vectors.col(1))->x, -1.0, 1e-12);
  EXPECT_NEAR(map.place(vectors.col(2))->x, 0.0, 1e-12);
  EXPECT_NEAR(std::abs(map.place(vectors.col(2))->y), 1.0, 1e-12);
  EXPECT_EQ(map.place(9 * vectors.col(0))->x, 1.0) << "cut to the map";
  EXPECT_FALSE(map.place(vectors.col(3)));
}

TEST(SentenceMap, NeedsNoSentences) {
  EXPECT_EQ(serve::SentenceMap(Eigen::MatrixXd(2, 0)).place(Eigen::Vector2d(1, 0))->x, 0.0);
}

TEST(Closeness, IsThatOfTheNearestSentences) {
  Eigen::MatrixXd vectors(2, 3);
  vectors << 1, 0, 0.6,  //
      0, 1, 0.8;
  const Eigen::MatrixXd closeness = serve::rule_closeness(vectors, {0, 0, 1}, 2);
  EXPECT_DOUBLE_EQ(closeness(0, 1), 0.8);
  EXPECT_DOUBLE_EQ(closeness(1, 0), 0.8);
  EXPECT_EQ(closeness(0, 0), 1.0);
}

}  // namespace
