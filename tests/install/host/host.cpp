// A host outside of this tree: it uses the three libraries, and a record with matrices
// that both sides allocate. Built and run by tests/install/install-test.
#include <fennel/stemmer.hpp>
#include <velmora/velmora.hpp>
#include <velmora/wordsense-model.hpp>
#include <zu/log.hpp>

int main() {
  zu::log::setLevel(zu::log::Level::warning);
  std::vector<std::string> stems;
  VX::Dialog::Stemmer("enu").stem_sentence("Lamps", stems);
  wordsense_model model;
  model.word_factors = Eigen::MatrixXd::Identity(3, 3);
  const wordsense_model copy = model;

  VX::Dialog::Velmora matcher;
  std::string base = "no such directory", language = "enu", unused;
  matcher.setModel(base, language);
  matcher.loadDialogVectors(unused, {{1, {"play some music"}}, {2, {"open the window"}}});
  matcher.activeAllRules(unused);
  std::vector<std::pair<double, std::vector<int>>> matches;
  matcher.matchInput("a song with music", matches, unused);
  const bool is_right = !matches.empty() && matches.front().second == std::vector<int>{1};
  return is_right && stems.size() == 1 && copy.word_factors.sum() == 3.0 ? 0 : 1;
}
