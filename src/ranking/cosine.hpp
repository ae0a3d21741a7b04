// The cosine of latent vectors, for one pair and for many rows against one query.
//
// Both forms give the bits of the published VX::Dialog::cosine: their sums run in index order. The
// form for many rows keeps the adder busy with several rows side by side, computes the norm of the
// query once, and is what matching spends its time on. Used by the ranking functions, the engines
// and the word distances. Not installed. Tested by tests/offline/offline-test.cpp and
// tests/ranking/ranking-test.cpp.
#pragma once

#include <vector>

#include "../support/tables.hpp"

namespace VX::Dialog::detail {

/// What VX::Dialog::cosine gives, without the copies that its published signature asks for.
double cosine_of(const std::vector<double>& first, const std::vector<double>& second);

/// cosine(vectors[row], query) for each of the rows, which must lie inside the table. A row is
/// scored once however often it comes.
std::vector<double> score_rows(const VectorTable& vectors, const std::vector<double>& query,
                               const std::vector<int>& rows);

}  // namespace VX::Dialog::detail
