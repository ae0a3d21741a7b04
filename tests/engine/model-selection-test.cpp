// Which model directory an engine takes, and what it has afterwards.
#include <gtest/gtest.h>

#include <boost/filesystem/exception.hpp>
#include <filesystem>
#include <zu/path.hpp>

#include "engine/velmora-private.hpp"
#include "support/fixtures.hpp"

namespace VX::Dialog {
namespace {

using test::kLanguage;
using test::LogCapture;
using test::TemporaryFolder;
using Lines = std::vector<std::string>;

struct RootCase {
  const char* what;
  const char* base;  // below the folder
  bool installed;
  const char* root;  // below the folder; empty when there is none
  std::size_t words;
};

const RootCase kRootCases[] = {
    {"the caller's directory wins", "own", true, "own/tst/", 4},
    {"the base is not normalised", "own/", false, "own//tst/", 4},
    {"a plain file counts as found", "file", true, "file/tst/", 0},
    {"installed data otherwise", "none", true, "data/dialog/velmora/data/tst/", 4},
    {"nothing anywhere", "none", false, "", 0},
};

TEST(SelectModel, TriesTheCallersDirectoryThenTheInstalledData) {
  for (const RootCase& c : kRootCases) {
    SCOPED_TRACE(c.what);
    const TemporaryFolder folder;
    test::use_installed_data(folder);
    test::write_model(folder, "own/tst");
    folder.write("file/tst", "");
    if (c.installed) {
      test::write_model(folder, test::kInstalledRoot);
    }
    const LogCapture log;
    VelmoraPrivate engine;
    std::string base = folder.path(c.base), language = kLanguage;
    const std::string root = *c.root != '\0' ? folder.path(c.root) : "";
    EXPECT_EQ(engine.xSetModel(base, language), !root.empty());
    EXPECT_EQ(engine.fLanguage, kLanguage);
    EXPECT_EQ(engine.fModelRoot, root);
    EXPECT_EQ(engine.fModelDir, root.empty() ? "" : root + "model/");
    EXPECT_EQ(engine.fModelFile, root.empty() ? "" : root + "model/model");
    EXPECT_EQ(engine.fIdfFile, root.empty() ? "" : root + "model/idf");
    EXPECT_EQ(engine.fDictionaryFile, root.empty() ? "" : root + "model/dictionary");
    EXPECT_EQ(engine.fVocab.size(), c.words);
    Lines lines;
    if (root.empty()) {
      lines = {"2 LibVelmora.Command xSetModel: SetModel(): Semantic model file not found: " +
               zu::path::findData("dialog", "velmora/data/tst/")};
    } else if (root != base + "/tst/") {
      lines = {"4 LibVelmora.Command xSetModel: SetModel(): " + base +
               "/tst/ not found  using default model " + root};
    }
    EXPECT_EQ(log.lines("LibVelmora.Command"), lines);
  }
}

TEST(SelectModel, KeepsTheEarlierModelButForTheLanguageWhenItFails) {
  const TemporaryFolder folder;
  const LogCapture quiet;
  test::use_installed_data(folder);
  VelmoraPrivate engine;
  test::give_model(engine, folder);
  std::string base = folder.path(), language = "nowhere", deep = base + std::string(300, 'x');
  EXPECT_FALSE(engine.xSetModel(base, language));
  EXPECT_EQ(engine.fLanguage, "nowhere");
  EXPECT_THROW(engine.xSetModel(deep, base), boost::filesystem::filesystem_error);
  EXPECT_EQ(engine.fLanguage, base);
  EXPECT_EQ(engine.fModelRoot, base + "/tst/");
  EXPECT_EQ(engine.fVocab.size(), 4U);
}

struct MissingFileCase {
  const char* file;
  bool loaded;
  std::size_t words;
  std::size_t idfs;
  int dim;                 // 3 in the files that are there
  Eigen::Index gram_size;  // 2 x 2 before
};

TEST(LoadSemanticModels, KeepsWhatTheMissingFileWouldHaveReplaced) {
  const MissingFileCase cases[] = {
      {"model", false, 1, 1, 2, 2},
      {"model.conf", true, 1, 1, 3, 2},
      {"dictionary", true, 0, 1, 3, 3},
      {"idf", true, 1, 0, 3, 3},
  };
  for (const MissingFileCase& c : cases) {
    SCOPED_TRACE(c.file);
    const TemporaryFolder folder;
    const LogCapture quiet;
    VelmoraPrivate engine;
    test::give_model(engine, folder);
    Eigen::MatrixXd gram(2, 2);
    gram << 1.5, 0.25, 0.25, 1.125;
    EXPECT_EQ(engine.fModelGram, gram);
    folder.write("tst/model/dictionary", "run\n");
    folder.write("tst/model/idf", "0 9\n");
    folder.write("tst/model/model", "3\n1\n1\n");
    folder.write("tst/model/model.conf", "1 3\n1 2 3 \n");
    std::filesystem::remove(folder.path("tst/model/") + c.file);
    EXPECT_EQ(engine.xLoadSemanticModels(), c.loaded);
    EXPECT_EQ(engine.fVocab.size(), c.words);
    EXPECT_EQ(engine.fIdf.size(), c.idfs);
    EXPECT_EQ(engine.fModel.dim, c.dim);
    EXPECT_EQ(engine.fModelGram.rows(), c.gram_size);
    // With the factors of before the product is computed anew, with the new missing_weight.
    EXPECT_EQ(engine.fModelGram(0, 0), c.loaded && c.gram_size == 2 ? 3.0 : c.loaded ? 1.0 : 1.5);
  }
}

}  // namespace
}  // namespace VX::Dialog
