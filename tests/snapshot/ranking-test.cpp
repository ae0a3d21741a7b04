// Ranking against the plain ordered map that it stands for, and the prints.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <random>
#include <velmora/ranking.hpp>
#include <velmora/similarity.hpp>

#include "snapshot/scoring.hpp"

namespace VX::Dialog {
namespace {

using Vectors = std::vector<std::vector<double>>;
using Ranked = std::map<double, std::vector<int>>;

struct Input {
  Vectors vectors;
  std::vector<double> query;
  std::set<int> active;
  std::map<int, int> rows;
};

// Few values and few dimensions, so that scores tie, cancel and overflow.
Input random_input(unsigned seed) {
  std::mt19937 random(seed);
  const auto below = [&](int bound) { return static_cast<int>(random() % unsigned(bound)); };
  const double values[] = {0, 1, -1, 2, 1, -0.0, 1e200, -1e-200, INFINITY, NAN};
  const int kinds = below(2) ? 6 : 10;
  Input input;
  const int dim = below(2) ? 1 + below(3) : 1 + below(40);
  const auto random_vector = [&](int size) {
    std::vector<double> vector;
    for (; size > 0; --size) {
      vector.push_back(values[below(kinds)]);
    }
    return vector;
  };
  for (int row = below(30); row > 0; --row) {
    input.vectors.push_back(random_vector(below(8) ? dim : below(dim + 2)));
  }
  input.query = random_vector(dim);
  for (int count = below(40); count > 0; --count) {
    const int rule_id = below(60) - 3;
    if (below(10)) {
      input.active.insert(rule_id);
    }
    if (below(4) && !input.vectors.empty()) {
      const int last = static_cast<int>(input.vectors.size()) + (below(20) ? 0 : 1);
      input.rows[rule_id] = below(200) ? below(last) : -1;
    }
  }
  return input;
}

// True when the row of every id lies in the table, as far as ids were scored.
bool slow_get_max(Input& input, Ranked& ranked) {
  for (const int rule_id : input.active) {
    const auto row = static_cast<std::size_t>(input.rows[rule_id]);
    if (row >= input.vectors.size()) {
      return false;
    }
    ranked[cosine(input.vectors[row], input.query)].push_back(rule_id);
  }
  return true;
}

// Equal scores to the sign of a zero; a score that is no number has no sign to speak of.
void expect_same(const Ranked& actual, const Ranked& expected) {
  ASSERT_EQ(actual.size(), expected.size());
  for (auto a = actual.begin(), e = expected.begin(); a != actual.end(); ++a, ++e) {
    EXPECT_EQ(a->second, e->second);
    EXPECT_TRUE(std::isnan(e->first) ? std::isnan(a->first)
                                     : std::memcmp(&a->first, &e->first, sizeof(double)) == 0)
        << a->first << " for " << e->first;
  }
}

TEST(Ranking, IsTheOrderedMapOfAllScores) {
  int complete = 0;
  for (unsigned seed = 0; seed != 3000; ++seed) {
    SCOPED_TRACE(seed);
    const Input input = random_input(seed);
    Input slow = input, fast = input;
    // What the caller's map holds stays and takes part.
    const Ranked before = seed % 2 ? Ranked() : Ranked{{0.0, {99}}, {7.0, {98}}};
    Ranked expected = before, ranked = before;
    const bool all_inside = slow_get_max(slow, expected);
    const auto run = [&] { get_max(fast.vectors, fast.query, ranked, fast.active, fast.rows); };
    if (all_inside) {
      run();
    } else {
      EXPECT_THROW(run(), std::out_of_range);
    }
    expect_same(ranked, expected);
    EXPECT_EQ(fast.rows, slow.rows);
    for (const std::size_t limit : {1U, 2U, 5U, 21U}) {
      Input limited = input;
      const auto best = [&] {
        return detail::best_scores(limited.vectors, limited.query, limited.active, limited.rows,
                                   limit);
      };
      if (all_inside) {
        Ranked kept;
        slow_get_max(slow, kept);
        kept.erase(kept.begin(), std::prev(kept.end(), std::min(limit, kept.size())));
        expect_same(best(), kept);
        ++complete;
      } else {
        EXPECT_THROW(best(), std::out_of_range);
      }
      EXPECT_EQ(limited.rows, slow.rows);
    }
  }
  EXPECT_GT(complete, 1000);
}

TEST(GetMax2, TakesIdsAsRowsAndEndsAtAFullMatch) {
  const Vectors vectors = {{1, 1}, {0, 1}, {}, {2, 0}, {-3, 0}, {1, 0}};
  const double slant = cosine({1, 1}, {1, 0});
  EXPECT_EQ(get_max2(vectors, {1, 0}, {0, 1, 2, 3, 4, 5}),
            (Ranked{{0.0, {1, 2}}, {slant, {0}}, {1.0, {3}}}));
  EXPECT_EQ(get_max2(vectors, {1, 0}, {0, 4}), (Ranked{{-1.0, {4}}, {slant, {0}}}));
  EXPECT_EQ(get_max2(vectors, {1, 0}, {}), Ranked());
  EXPECT_EQ(get_max2(vectors, {1, 0}, {5, 6}), (Ranked{{1.0, {5}}}));
  EXPECT_THROW(get_max2(vectors, {1, 0}, {4, 6}), std::out_of_range);
  EXPECT_THROW(get_max2(vectors, {1, 0}, {-1}), std::out_of_range);
}

template <typename Print>
std::string printed(Print print) {
  testing::internal::CaptureStdout();
  print();
  return testing::internal::GetCapturedStdout();
}

TEST(Prints, WriteTheirTables) {
  const Ranked ranked = {{-0.5, {1, 2}}, {0.123456789, {1}}, {1.0, {2}}};
  const std::map<int, std::vector<std::string>> words = {{1, {"go", "up"}}, {2, {}}};
  const std::string worst = " distance -0.5\n[ index 1\ngo up\nindex 2\n\n ]\n\n";
  const std::string middle = " distance 0.123457\n[ index 1\ngo up\n ]\n\n";
  const std::string best = " distance 1\n[ index 2\n\n ]\n\n";
  EXPECT_EQ(printed([&] { print_res(ranked, words, 0); }), worst);
  EXPECT_EQ(printed([&] { print_res(ranked, words, 1); }), worst + middle);
  EXPECT_EQ(printed([&] { print_res(ranked, words, -1); }), worst + middle + best);
  EXPECT_EQ(printed([&] {
              EXPECT_THROW(print_res(ranked, {{1, {"go", "up"}}}, 5), std::out_of_range);
            }),
            " distance -0.5\n[ index 1\ngo up\nindex 2\n");
  EXPECT_EQ(printed([] { print_ls({{1, -2.5}, {}}); }), "1 -2.5 \n\n");
  EXPECT_EQ(printed([] {
              print_tfidf({{{3, 0.5}, {7, 2}}, {}});
            }),
            "query index \n[\nword index 3\ntfidf 0.5\nword index 7\ntfidf 2\n]\n"
            "query index \n[\n]\n");
}

}  // namespace
}  // namespace VX::Dialog
