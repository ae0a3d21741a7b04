// The tables that travel through the library: one name for each type.
//
// Published headers write the types out; the code that implements them uses these names. Used
// by every room. Not installed. Types alone; tested by tests/text/text-tables-test.cpp and all
// tests of what has them.
#pragma once

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace VX::Dialog::detail {

/// Rule id to the sentences of the rule, or to their stems once they have been stemmed.
using RuleTable = std::map<int, std::vector<std::string>>;
/// Rule id to the row of its vector in a VectorTable. Rules with equal stems share a row.
using RowTable = std::map<int, int>;
/// Latent vectors by row.
using VectorTable = std::vector<std::vector<double>>;

/// Word to word id.
using Vocabulary = std::map<std::string, int>;
/// Word id to idf.
using IdfTable = std::map<int, double>;
/// Stem to count.
using StemCounts = std::map<std::string, int>;
/// Sentence id to word ids.
using WordIdTable = std::map<int, std::vector<int>>;
/// Word id to weight, for one sentence.
using SentenceWeights = std::map<int, double>;
/// Sentence id to the weights of its words.
using WeightTable = std::map<int, SentenceWeights>;

/// Score to the ids of the rules that have it, ascending.
using ScoreGroups = std::map<double, std::vector<int>>;
/// Score groups as a match answers with them, best first.
using MatchList = std::vector<std::pair<double, std::vector<int>>>;

}  // namespace VX::Dialog::detail
