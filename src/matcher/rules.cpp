// Rules files. Tested by tests/matcher/files-test.cpp.
#include <unordered_map>

#include <velmora/rules.hpp>

#include "input-file.hpp"

namespace velmora {

namespace {

std::string rule_id_fault(std::string_view id) {
  if (detail::int_of(id)) {
    return "";
  }
  return "'" + std::string(id) + "' before the tab: expected a rule id, a whole number of 32 bits";
}

}  // namespace

std::vector<Rule> read_rules(const std::filesystem::path& path) {
  std::vector<Rule> rules;
  std::unordered_map<int, std::size_t> place_of;
  for (detail::IdLine& line : detail::read_id_lines(path, rule_id_fault)) {
    const int id = detail::int_of(line.id).value_or(0);
    const auto [place, is_new] = place_of.try_emplace(id, rules.size());
    if (is_new) {
      rules.push_back({id, {}});
    }
    Rule& rule = rules[place->second];
    rule.sentences.push_back(std::move(line.sentence));
    rule.lines.push_back(line.line);
  }
  return rules;
}

}  // namespace velmora
