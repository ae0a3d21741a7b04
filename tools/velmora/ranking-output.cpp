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

std::string id_text(const RankedRule& rule) {
  const int* number = std::get_if<int>(&rule.id);
  return number != nullptr ? std::to_string(*number) : std::get<std::string>(rule.id);
}

}  // namespace

void print_ranking(std::ostream& out, const Ranking& ranking, bool echo, const Paint& paint) {
  if (echo) {
    out << paint.strong << ranking.sentence << paint.plain << "\n";
  }
  if (ranking.rules.empty()) {
    out << paint.faint << "  nothing matches" << paint.plain << "\n";
  }
  std::size_t id_width = 0;
  for (const RankedRule& rule : ranking.rules) {
    id_width = std::max(id_width, display_width(id_text(rule)));
  }
  for (const RankedRule& rule : ranking.rules) {
    const bool best = &rule == &ranking.rules.front();
    out << score_text(rule.score) << "  " << paint.bar << bar(rule.score) << paint.plain << "  "
        << (best ? paint.strong : "") << padded(id_text(rule), id_width + 2) << rule.sentence
        << (best ? paint.plain : "") << "\n";
  }
  const char* separator = "  unknown: ";
  for (const std::string& word : ranking.unknown) {
    out << paint.faint << separator << word << paint.plain;
    separator = ", ";
  }
  out << (ranking.unknown.empty() ? "\n" : "\n\n");
}

void print_ranking_json(std::ostream& out, const Ranking& ranking) {
  nlohmann::ordered_json matches = nlohmann::ordered_json::array();
  for (const RankedRule& rule : ranking.rules) {
    nlohmann::ordered_json match = {{"score", rule.score}};
    std::visit([&](const auto& id) { match["id"] = id; }, rule.id);
    match["sentence"] = rule.sentence;
    matches.push_back(match);
  }
  const nlohmann::ordered_json object = {
      {"sentence", ranking.sentence}, {"unknown", ranking.unknown}, {"matches", matches}};
  out << object.dump() << "\n";
}
