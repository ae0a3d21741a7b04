// The compiled half of the Python module: velmora/__init__.py wraps what is here in Python's own
// types.
//
// Records leave as tuples in the order of their fields in velmora/results.py. Work on rules and
// sentences is done with the interpreter lock released; arguments are converted before and results
// after that.
#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <pybind11/numpy.h>
#include <pybind11/pybind11.h>
#include <pybind11/stl.h>
#include <pybind11/stl/filesystem.h>

#include <velmora/error.hpp>
#include <velmora/evaluation.hpp>
#include <velmora/lint.hpp>
#include <velmora/matcher.hpp>

namespace py = pybind11;

namespace {

using Sentences = std::vector<std::string>;
using Rules = std::vector<std::pair<int, Sentences>>;

// A rule id (or none), a sentence, and its line in a file (0 without one).
using Expectations = std::vector<std::tuple<std::optional<int>, std::string, std::size_t>>;

// Runs C++ code while other Python threads go on.
template <typename Work>
auto unlocked(const Work& work) {
  const py::gil_scoped_release released;
  return work();
}

py::tuple to_python(const velmora::Answer& answer) {
  py::list matches(answer.matches.size());
  for (std::size_t i = 0; i != answer.matches.size(); ++i) {
    const velmora::Match& match = answer.matches[i];
    matches[i] = py::make_tuple(match.id, match.score, match.sentence);
  }
  return py::make_tuple(std::move(matches), answer.unknown, answer.margin);
}

py::tuple to_python(const velmora::Explanation& explanation) {
  py::list pairs;
  for (const velmora::WordPair& pair : explanation.pairs) {
    pairs.append(
        py::make_tuple(pair.query_word, pair.rule_word, pair.latent, pair.words, pair.characters));
  }
  return py::make_tuple(explanation.id, explanation.score, explanation.sentence, std::move(pairs),
                        explanation.unknown);
}

py::list to_python(const std::vector<velmora::Finding>& findings) {
  py::list list;
  for (const velmora::Finding& finding : findings) {
    list.append(py::make_tuple(velmora::name_of(finding.kind), finding.rule, finding.sentence,
                               finding.other, finding.other_sentence, finding.text));
  }
  return list;
}

py::tuple to_python(const velmora::Evaluation& evaluation) {
  py::list failures;
  for (const velmora::Failure& failure : evaluation.failures) {
    failures.append(py::make_tuple(failure.expectation, failure.rank, failure.wanted_score,
                                   failure.got.id, failure.got.score));
  }
  py::list confusions;
  for (const velmora::Confusion& confusion : evaluation.confusions) {
    confusions.append(py::make_tuple(confusion.wanted, confusion.got, confusion.count));
  }
  return py::make_tuple(evaluation.in_scope, evaluation.out_of_scope, evaluation.first,
                        evaluation.among_three, evaluation.mean_reciprocal_rank,
                        evaluation.area_under_roc,
                        py::make_tuple(evaluation.threshold.score, evaluation.threshold.keeps,
                                       evaluation.threshold.lets_through),
                        std::move(failures), std::move(confusions));
}

// A vector as an array that owns it, without a copy.
py::array_t<double> to_array(std::vector<double> values) {
  auto owned = std::make_unique<std::vector<double>>(std::move(values));
  const std::vector<double>& kept = *owned;
  const py::capsule owner(owned.release(),
                          [](void* memory) { delete static_cast<std::vector<double>*>(memory); });
  return py::array_t<double>(static_cast<py::ssize_t>(kept.size()), kept.data(), owner);
}

// n x D, a row a sentence.
py::array_t<double> vectors_of(const velmora::Model& model, const Sentences& sentences) {
  py::array_t<double> rows({sentences.size(), model.dimension()});
  double* row = rows.mutable_data();
  unlocked([&] {
    for (const std::string& sentence : sentences) {
      const std::vector<double> vector = model.vector(sentence);
      row = std::copy(vector.begin(), vector.end(), row);
    }
  });
  return rows;
}

velmora::Model load_model(const std::string& language,
                          const std::optional<std::filesystem::path>& directory) {
  return unlocked([&] {
    return directory ? velmora::Model::load(*directory, language)
                     : velmora::Model::installed(language);
  });
}

velmora::Matcher make_matcher(const velmora::Model& model, Rules rules) {
  std::vector<velmora::Rule> converted;
  converted.reserve(rules.size());
  for (auto& [id, sentences] : rules) {
    converted.push_back({id, std::move(sentences)});
  }
  return unlocked([&] { return velmora::Matcher(model, std::move(converted)); });
}

velmora::MatchOptions options_of(std::size_t top, const std::optional<double>& threshold,
                                 const velmora::ActiveRules* active) {
  velmora::MatchOptions options;
  options.top = top;
  options.threshold = threshold.value_or(options.threshold);
  options.active = active;
  return options;
}

py::list match_many(const velmora::Matcher& matcher, const Sentences& sentences, std::size_t top,
                    const std::optional<double>& threshold, const velmora::ActiveRules* active,
                    unsigned threads) {
  const velmora::MatchOptions options = options_of(top, threshold, active);
  const std::vector<velmora::Answer> answers =
      unlocked([&] { return matcher.match(sentences, options, threads); });
  py::list list(answers.size());
  for (std::size_t i = 0; i != answers.size(); ++i) {
    list[i] = to_python(answers[i]);
  }
  return list;
}

py::tuple evaluate(const velmora::Matcher& matcher, Expectations expectations, unsigned threads) {
  std::vector<velmora::Expectation> converted;
  converted.reserve(expectations.size());
  for (auto& [id, sentence, line] : expectations) {
    converted.push_back({id, std::move(sentence), line});
  }
  return to_python(unlocked([&] { return velmora::evaluate(matcher, converted, threads); }));
}

Rules read_rules(const std::filesystem::path& path) {
  Rules rules;
  for (velmora::Rule& rule : velmora::read_rules(path)) {
    rules.emplace_back(rule.id, std::move(rule.sentences));
  }
  return rules;
}

Expectations read_expectations(const std::filesystem::path& path) {
  Expectations expectations;
  for (velmora::Expectation& expectation : velmora::read_expectations(path)) {
    expectations.emplace_back(expectation.id, std::move(expectation.sentence), expectation.line);
  }
  return expectations;
}

void define_model(py::module_& module) {
  py::class_<velmora::Model>(module, "Model")
      .def(py::init(&load_model))
      .def("language", &velmora::Model::language)
      .def("directory", &velmora::Model::directory)
      .def("dimension", &velmora::Model::dimension)
      .def("vocabulary_size", &velmora::Model::vocabulary_size)
      .def("stems", [](const velmora::Model& model,
                       const std::string& sentence) { return model.stems(sentence); })
      .def("knows",
           [](const velmora::Model& model, const std::string& stem) { return model.knows(stem); })
      .def("vector", [](const velmora::Model& model,
                        const std::string& sentence) { return to_array(model.vector(sentence)); })
      .def("vectors", &vectors_of);
}

void define_matcher(py::module_& module) {
  py::class_<velmora::ActiveRules>(module, "ActiveRules")
      .def("__len__", &velmora::ActiveRules::size);
  py::class_<velmora::Matcher>(module, "Matcher")
      .def(py::init(&make_matcher))
      .def("match",
           [](const velmora::Matcher& matcher, const std::string& sentence, std::size_t top,
              const std::optional<double>& threshold, const velmora::ActiveRules* active) {
             const velmora::MatchOptions options = options_of(top, threshold, active);
             return to_python(unlocked([&] { return matcher.match(sentence, options); }));
           })
      .def("match_many", &match_many)
      .def("activate", &velmora::Matcher::activate)
      .def("explain",
           [](const velmora::Matcher& matcher, const std::string& sentence, int id) {
             return to_python(unlocked([&] { return matcher.explain(sentence, id); }));
           })
      .def("lint",
           [](const velmora::Matcher& matcher) {
             return to_python(unlocked([&] { return velmora::lint(matcher); }));
           })
      .def("evaluate", &evaluate);
}

}  // namespace

PYBIND11_MODULE(_velmora, module) {
  module.attr("__version__") = VELMORA_VERSION;
  py::register_exception<velmora::Error>(module, "Error", PyExc_ValueError);
  module.def("installed_languages", &velmora::Model::installed_languages);
  module.def("read_rules", &read_rules);
  module.def("read_expectations", &read_expectations);
  define_model(module);
  define_matcher(module);
}
