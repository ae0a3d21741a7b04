// The names of the files in a model directory. Their formats: docs/file-formats.md.
//
// Used by the engines, the matcher and the programs in tools/. Not installed. Tested by
// tests/engine/model-selection-test.cpp.
#pragma once

namespace VX::Dialog::detail {

/// Folder of a language's model and its snapshots, in the folder of the language.
inline constexpr const char* kModelFolder = "model/";

/// The words; what get_word_ids reads.
inline constexpr const char* kDictionaryFile = "dictionary";
/// Their idf; what load_idf reads.
inline constexpr const char* kIdfFile = "idf";
/// The scalars of the latent model; what read_wordsense_model reads.
inline constexpr const char* kModelFile = "model";
/// The word factors of the latent model, whose path is that of the scalars and this suffix.
inline constexpr const char* kFactorsSuffix = ".conf";
inline constexpr const char* kFactorsFile = "model.conf";

/// All files that make up a model.
inline constexpr const char* kModelFiles[] = {kDictionaryFile, kIdfFile, kModelFile, kFactorsFile};

/// The snapshot that a compilation leaves.
inline constexpr const char* kCompiledSnapshot = "newindex";
/// The snapshot that a merge load leaves.
inline constexpr const char* kMergedSnapshot = "index";

}  // namespace VX::Dialog::detail
