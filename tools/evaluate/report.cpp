#include "report.hpp"

#include <cstdio>
#include <ostream>

#include <nlohmann/json.hpp>

namespace {

constexpr std::size_t kConfusionsShown = 10;

/// One line of figures: what they are and one value for each contender.
struct Row {
  std::string title;
  std::string json_key;
  int decimals = 3;
  std::vector<double> values;
};

template <typename Result, typename Pick>
Row row(const std::vector<Result>& results, const char* title, const char* json_key, int decimals,
        const Pick& pick) {
  Row made{title, json_key, decimals, {}};
  for (const Result& result : results) {
    made.values.push_back(pick(result));
  }
  return made;
}

std::vector<Row> intent_rows(const Report& report) {
  using Result = IntentResult;
  const auto& results = report.intents;
  std::vector<Row> rows = {
      row(results, "top-1", "top1", 3, [](const Result& r) { return r.figures.top1; }),
      row(results, "top-3", "top3", 3, [](const Result& r) { return r.figures.top3; }),
      row(results, "mean reciprocal rank", "mean_reciprocal_rank", 3,
          [](const Result& r) { return r.figures.mean_reciprocal_rank; }),
      row(results, "top-1, low overlap", "top1_low_overlap", 3,
          [](const Result& r) { return r.low_overlap_figures.top1; }),
      row(results, "best threshold", "threshold", 3,
          [](const Result& r) { return r.threshold.score; }),
      row(results, "  right answers it keeps", "threshold_keeps", 3,
          [](const Result& r) { return r.threshold.keeps; }),
      row(results, "  others it lets through", "threshold_lets_through", 3,
          [](const Result& r) { return r.threshold.lets_through; }),
      row(results, "milliseconds a sentence", "milliseconds_per_sentence", 3,
          [](const Result& r) { return r.milliseconds_per_sentence; })};
  if (report.has_out_of_scope) {
    rows.insert(rows.begin() + 3, row(results, "area under ROC, out of scope", "area_under_roc", 3,
                                      [](const Result& r) { return r.area_under_roc; }));
  }
  return rows;
}

std::vector<Row> pair_rows(const Report& report) {
  return {
      row(report.pairs, "Pearson", "pearson", 3, [](const PairResult& r) { return r.pearson; }),
      row(report.pairs, "Spearman", "spearman", 3, [](const PairResult& r) { return r.spearman; })};
}

void print_rows(std::ostream& out, const std::vector<std::string>& contenders,
                const std::vector<Row>& rows) {
  char text[64];
  out << std::string(30, ' ');
  for (std::size_t column = 0; column != rows.front().values.size(); ++column) {
    std::snprintf(text, sizeof text, "%10s", contenders[column].c_str());
    out << text;
  }
  out << "\n";
  for (const Row& line : rows) {
    std::snprintf(text, sizeof text, "%-30s", line.title.c_str());
    out << text;
    for (const double value : line.values) {
      std::snprintf(text, sizeof text, "%10.*f", line.decimals, value);
      out << text;
    }
    out << "\n";
  }
}

void print_confusions(std::ostream& out, const std::string& contender,
                      const std::vector<Outcome>& outcomes) {
  const std::vector<Confusion> confusions = worst_confusions(outcomes, kConfusionsShown);
  if (confusions.empty()) {
    return;
  }
  out << "\nmost frequent confusions, " << contender << ":\n";
  for (const Confusion& confusion : confusions) {
    char count[16];
    std::snprintf(count, sizeof count, "%6d", confusion.count);
    out << count << "  " << confusion.wanted << " -> "
        << (confusion.got.empty() ? "(nothing)" : confusion.got) << "\n";
  }
}

nlohmann::ordered_json figures_json(const std::vector<Row>& rows, std::size_t contender) {
  nlohmann::ordered_json figures;
  for (const Row& line : rows) {
    figures[line.json_key] = line.values[contender];
  }
  return figures;
}

nlohmann::ordered_json confusions_json(const std::vector<Outcome>& outcomes) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const Confusion& confusion : worst_confusions(outcomes, kConfusionsShown)) {
    list.push_back(
        {{"wanted", confusion.wanted}, {"got", confusion.got}, {"count", confusion.count}});
  }
  return list;
}

nlohmann::ordered_json failures_json(const std::vector<Outcome>& outcomes) {
  nlohmann::ordered_json list = nlohmann::ordered_json::array();
  for (const Outcome& outcome : outcomes) {
    if (outcome.rank != 1) {
      list.push_back({{"sentence", outcome.sentence},
                      {"wanted", outcome.wanted},
                      {"rank", outcome.rank},
                      {"got", outcome.best},
                      {"got_score", outcome.best_score},
                      {"low_overlap", outcome.low_overlap}});
    }
  }
  return list;
}

}  // namespace

void print_report(std::ostream& out, const Report& report) {
  out << "model: " << report.model_directory << "\n";
  if (!report.intents.empty()) {
    out << "\nintents: " << report.label_count << " labels, " << report.rule_count << " rules, "
        << report.intents.front().outcomes.size() << " test sentences, " << report.low_overlap_count
        << " with low overlap\n";
    if (report.unknown_rule_count != 0) {
      out << "left out: " << report.unknown_rule_count << " rules without a known word\n";
    }
    print_rows(out, report.contenders, intent_rows(report));
    for (std::size_t contender = 0; contender != report.intents.size(); ++contender) {
      print_confusions(out, report.contenders[contender], report.intents[contender].outcomes);
    }
  }
  if (!report.pairs.empty()) {
    out << "\npairs: " << report.pair_count << "\n";
    print_rows(out, report.contenders, pair_rows(report));
  }
}

void print_report_json(std::ostream& out, const Report& report) {
  nlohmann::ordered_json object = {{"language", report.language},
                                   {"model", report.model_directory}};
  if (!report.intents.empty()) {
    object["intents"] = {{"labels", report.label_count},
                         {"rules", report.rule_count},
                         {"unknown_rules", report.unknown_rule_count},
                         {"sentences", report.intents.front().outcomes.size()},
                         {"low_overlap", report.low_overlap_count}};
  }
  if (!report.pairs.empty()) {
    object["pairs"] = {{"count", report.pair_count}};
  }
  for (std::size_t contender = 0; contender != report.contenders.size(); ++contender) {
    const std::string& name = report.contenders[contender];
    if (!report.intents.empty()) {
      object["intents"][name] = figures_json(intent_rows(report), contender);
      object["intents"][name]["confusions"] = confusions_json(report.intents[contender].outcomes);
      object["intents"][name]["failures"] = failures_json(report.intents[contender].outcomes);
    }
    if (contender < report.pairs.size()) {
      object["pairs"][name] = figures_json(pair_rows(report), contender);
    }
  }
  using Handler = nlohmann::ordered_json::error_handler_t;
  out << object.dump(2, ' ', false, Handler::replace) << "\n";
}
