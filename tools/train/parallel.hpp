// Runs independent pieces of work on several threads.
//
// Used by the corpus reader and the factorisation. Which thread does which piece is left to chance,
// so a piece must write only what is its own; results that are added up are added up afterwards, in
// the order of the pieces. Then the number of threads has no influence on any bit of a model.
// Tested by tools/train/tests/factorisation-test.cpp.
#pragma once

#include <cstddef>
#include <functional>

namespace velmora::trainer {

/// Calls work(piece, worker) once for each piece in [0, pieces); worker is in [0, threads), and two
/// calls with the same worker never overlap. Checks for interrupts between pieces. The first
/// exception of a piece is thrown on when all threads have ended.
void for_each_piece(int threads, std::size_t pieces,
                    const std::function<void(std::size_t piece, int worker)>& work);

}  // namespace velmora::trainer
