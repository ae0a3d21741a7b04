#include "parallel.hpp"

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

#include "interrupt.hpp"

namespace velmora::trainer {

void for_each_piece(int threads, std::size_t pieces,
                    const std::function<void(std::size_t piece, int worker)>& work) {
  std::atomic<std::size_t> next_piece{0};
  std::exception_ptr first_exception;
  std::mutex exception_mutex;
  auto run_worker = [&](int worker) {
    try {
      for (std::size_t piece = next_piece++; piece < pieces; piece = next_piece++) {
        check_interrupt();
        work(piece, worker);
      }
    } catch (...) {
      std::lock_guard<std::mutex> lock(exception_mutex);
      if (!first_exception) {
        first_exception = std::current_exception();
      }
      next_piece = pieces;  // the others stop after the piece at hand
    }
  };

  const int workers =
      static_cast<int>(std::min<std::size_t>(static_cast<std::size_t>(threads), pieces));
  {
    std::vector<std::jthread> others;
    for (int worker = 1; worker < workers; ++worker) {
      others.emplace_back(run_worker, worker);
    }
    run_worker(0);
  }
  if (first_exception) {
    std::rethrow_exception(first_exception);
  }
}

}  // namespace velmora::trainer
