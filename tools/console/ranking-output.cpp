// Shows the ranked rules of a sentence; see ranking-output.hpp.
#include "ranking-output.hpp"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ostream>

#include <nlohmann/json.hpp>

namespace {

constexpr int kBarCells = 20;

/// A bar of eighths of a cell, `kBarCells` wide; empty for a score of 0 or less.
std::string bar(double score) {
  static const char* const kEighths[] = {"", "▏", "▎", "▍", "▌", "▋", "▊", "▉"};
  const int eighths = static_cast<int>(std::lround(std::clamp(score, 0.0, 1.0) * kBarCells * 8));
  std::string text;
  for (int cell = 0; cell != eighths / 8; ++cell) {
    text += "█";
  }
  text += kEighths[eighths % 8];
  const int used = (eighths + 7) / 8;
  return text.append(static_cast<std::size_t>(kBarCells - used), ' ');
}

std::string score_text(double score) {
  char text[32];
  // Adding 0 turns a rounded -0 into 0.
  std::snprintf(text, sizeof text, "%6.3f", std::round(score * 1000) / 1000 + 0.0);
  return text;
}

struct Paint {
  const char* best = "";
  const char* bar = "";
  const char* faint = "";
  const char* plain = "";
};

constexpr Paint kTerminalPaint{"\033[1m", "\033[32m", "\033[2m", "\033[0m"};

}  // namespace

void print_ranking(std::ostream& out, const Ranking& ranking, bool echo, bool colour) {
  const Paint paint = colour ? kTerminalPaint : Paint{};
  if (echo) {
    out << paint.best << ranking.sentence << paint.plain << "\n";
  }
  if (!ranking.known) {
    out << paint.faint << "  no word of this is in the model's dictionary" << paint.plain << "\n";
  } else if (ranking.rules.empty()) {
    out << paint.faint << "  nothing reaches the threshold" << paint.plain << "\n";
  }
  std::size_t id_width = 0;
  for (const RankedRule& rule : ranking.rules) {
    id_width = std::max(id_width, rule.id.size());
  }
  for (const RankedRule& rule : ranking.rules) {
    const bool best = &rule == &ranking.rules.front();
    out << score_text(rule.score) << "  " << paint.bar << bar(rule.score) << paint.plain << "  "
        << (best ? paint.best : "") << rule.id << std::string(id_width - rule.id.size() + 2, ' ')
        << rule.sentence << (best ? paint.plain : "") << "\n";
  }
  out << "\n" << std::flush;
}

void print_ranking_json(std::ostream& out, const Ranking& ranking) {
  nlohmann::ordered_json matches = nlohmann::ordered_json::array();
  for (const RankedRule& rule : ranking.rules) {
    matches.push_back({{"score", rule.score}, {"id", rule.id}, {"sentence", rule.sentence}});
  }
  const nlohmann::ordered_json object = {
      {"sentence", ranking.sentence}, {"known", ranking.known}, {"matches", matches}};
  using Handler = nlohmann::ordered_json::error_handler_t;
  out << object.dump(-1, ' ', false, Handler::replace) << "\n" << std::flush;
}
