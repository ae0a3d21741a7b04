// The model of a language: what a Matcher scores with.
//
//   const velmora::Model model = velmora::Model::installed("enu");
//   model.stems("Switch the lights on!");    // {"light", "on", "switch", "the"}
//
// Tested by tests/matcher/model-test.cpp.
#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <velmora/export.hpp>

namespace velmora {

namespace detail {
struct ModelData;
}

/// A dictionary, the weights of its words and their latent factors, together with the stemmer of
/// the language. Immutable and shared: a copy costs as much as a shared pointer, and every member
/// may be called from any number of threads. Nothing is logged, and nothing is written to the
/// folder of the model.
class VELMORA_EXPORT Model {
 public:
  /// Loads the model whose four files ("dictionary", "idf", "model", "model.conf") lie in
  /// `directory`: the folder that velmora-train --output wrote.
  ///
  /// language   code of the stemmer that the model was trained with: "enu", "frf" or "jpj"
  ///
  /// Loading is strict. Throws Error, naming the file, the line and what was expected, when a file
  /// is missing or is not a regular file; when the files do not agree about the number of words or
  /// the dimension; when a word is not UTF-8, is empty or comes twice; when a number is malformed,
  /// infinite or NaN, or when there is text behind the last one. No header makes it allocate more
  /// than a small multiple of the size of the files. Throws Error for an unknown language code.
  static Model load(const std::filesystem::path& directory, const std::string& language);

  /// Loads the installed model of a language: dialog/velmora/data/<language>/model/ below
  /// $XDG_DATA_HOME, the prefix of the library or $XDG_DATA_DIRS, whichever comes first.
  /// Throws Error as load() does; for a language without an installed model the text lists those
  /// that have one.
  static Model installed(const std::string& language);

  /// Codes of the languages that installed() finds a folder for, in alphabetical order.
  static std::vector<std::string> installed_languages();

  /// Codes of the languages that there is a stemmer for, in alphabetical order.
  static std::vector<std::string> known_languages();

  /// The code that was given to load() or installed().
  const std::string& language() const noexcept;
  /// The folder of the four files.
  const std::filesystem::path& directory() const noexcept;
  /// Number of latent dimensions, D.
  std::size_t dimension() const noexcept;
  /// Number of words in the dictionary.
  std::size_t vocabulary_size() const noexcept;

  /// A sentence (UTF-8) as the matcher sees it: its stems, sorted and without repeats. Stems that
  /// the model does not know are among them.
  std::vector<std::string> stems(std::string_view sentence) const;

  /// True when a stem is in the dictionary.
  bool knows(std::string_view stem) const;

  /// The latent vector of a sentence: dimension() values of length 1; all of them 0 for a sentence
  /// without a known word.
  std::vector<double> vector(std::string_view sentence) const;

  /// The loaded tables; for the library itself.
  const detail::ModelData& data() const noexcept { return *data_; }

 private:
  explicit Model(std::shared_ptr<const detail::ModelData> data) : data_(std::move(data)) {}

  std::shared_ptr<const detail::ModelData> data_;
};

}  // namespace velmora
