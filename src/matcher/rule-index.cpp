#include "rule-index.hpp"

#include <numeric>

namespace velmora::detail {

namespace {

std::vector<std::size_t> starts_of(const std::vector<std::size_t>& places,
                                   const std::vector<std::size_t>& first_sentence) {
  std::vector<std::size_t> first = {0};
  for (const std::size_t place : places) {
    first.push_back(first.back() + first_sentence[place + 1] - first_sentence[place]);
  }
  return first;
}

std::vector<std::size_t> sentences_of(const std::vector<std::size_t>& places,
                                      const std::vector<std::size_t>& first_sentence) {
  std::vector<std::size_t> sentences;
  for (const std::size_t place : places) {
    for (std::size_t j = first_sentence[place]; j != first_sentence[place + 1]; ++j) {
      sentences.push_back(j);
    }
  }
  return sentences;
}

VX::Dialog::detail::RowIndex coarse_rows(const Eigen::MatrixXd& latent,
                                         const std::vector<std::size_t>& sentences,
                                         const Eigen::MatrixXd& linear,
                                         const std::vector<std::size_t>& places) {
  const std::size_t count = sentences.size() + places.size();
  Eigen::MatrixXd rows(latent.rows(), static_cast<Eigen::Index>(count));
  Eigen::Index row = 0;
  for (const std::size_t sentence : sentences) {
    rows.col(row++) = latent.col(static_cast<Eigen::Index>(sentence));
  }
  for (const std::size_t place : places) {
    rows.col(row++) = linear.col(static_cast<Eigen::Index>(place));
  }
  return {rows.data(), count, static_cast<std::size_t>(latent.rows())};
}

}  // namespace

Postings::Postings(const std::vector<SparseVector>& vectors,
                   const std::vector<std::size_t>& sentences, std::size_t size)
    : sentence_count_(sentences.size()), first_(size + 1) {
  for (const std::size_t sentence : sentences) {
    for (const Feature& feature : vectors[sentence]) {
      ++first_[static_cast<std::size_t>(feature.id) + 1];
    }
  }
  std::partial_sum(first_.begin(), first_.end(), first_.begin());
  postings_.resize(first_.back());
  std::vector<std::size_t> next = first_;
  for (std::size_t s = 0; s != sentences.size(); ++s) {
    for (const Feature& feature : vectors[sentences[s]]) {
      postings_[next[static_cast<std::size_t>(feature.id)]++] = {static_cast<std::uint32_t>(s),
                                                                 feature.value};
    }
  }
}

std::vector<double> Postings::dots(const SparseVector& query) const {
  std::vector<double> dots(sentence_count_);
  for (const Feature& feature : query) {
    const auto id = static_cast<std::size_t>(feature.id);
    const double value = feature.value;
    for (std::size_t p = first_[id]; p != first_[id + 1]; ++p) {
      dots[postings_[p].sentence] += value * static_cast<double>(postings_[p].value);
    }
  }
  return dots;
}

RuleIndex::RuleIndex(std::vector<std::size_t> rule_places,
                     const std::vector<std::size_t>& first_sentence, const SentenceTable& table,
                     const Eigen::MatrixXd& linear, const Views& views)
    : places(std::move(rule_places)),
      first(starts_of(places, first_sentence)),
      sentences(sentences_of(places, first_sentence)),
      words(table.words, sentences, views.word_count()),
      characters(table.characters, sentences, views.piece_count()),
      latent(coarse_rows(table.latent, sentences, linear, places)),
      rows(latent.size()) {
  std::iota(rows.begin(), rows.end(), 0);
}

}  // namespace velmora::detail
