// Which model directory an engine takes, and what it has afterwards.
#include <gtest/gtest.h>

#include <boost/filesystem/exception.hpp>
#include <filesystem>
#include <zu/path.hpp>

#include "engine/velmora-private.hpp"
#include "support/fixtures.hpp"

namespace {

using namespace VX::Dialog;
using namespace test;

TEST(SelectModel, TriesTheCallersDirectoryThenTheInstalledData) {
  struct {
    const char* what;
    const char* base;
    bool installed;
    const char* root;  // empty when there is none
    std::size_t words;
  } const cases[] = {
      {"the caller's directory wins", "own", true, "own/tst/", 4},
      {"the base is not normalised", "own/", false, "own//tst/", 4},
      {"a plain file counts as found", "file", true, "file/tst/", 0},
      {"installed data otherwise", "none", true, "data/dialog/velmora/data/tst/", 4},
      {"nothing anywhere", "none", false, "", 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    const TemporaryFolder folder;
    use_installed_data(folder);
    write_model(folder, "own/tst");
    folder.write("file/tst", "");
    if (c.installed) {
      write_model(folder, kInstalledRoot);
    }
    const LogCapture log;
    VelmoraPrivate engine;
    std::string base = folder.path(c.base), language = kLanguage;
    const std::string root = *c.root != '\0' ? folder.path(c.root) : "";
    EXPECT_EQ(engine.xSetModel(base, language), !root.empty());
    EXPECT_EQ(engine.fLanguage, kLanguage);
    EXPECT_EQ(engine.fModelRoot, root);
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
  use_installed_data(folder);
  VelmoraPrivate engine;
  give_model(engine, folder);
  std::string base = folder.path(), language = "nowhere", deep = base + std::string(300, 'x');
  EXPECT_FALSE(engine.xSetModel(base, language));
  EXPECT_EQ(engine.fLanguage, "nowhere");
  EXPECT_THROW(engine.xSetModel(deep, base), boost::filesystem::filesystem_error);
  EXPECT_EQ(engine.fLanguage, base);
  EXPECT_EQ(engine.fModelRoot, base + "/tst/");
  EXPECT_EQ(engine.fVocab.size(), 4U);
}

TEST(LoadSemanticModels, KeepsWhatTheMissingFileWouldHaveReplaced) {
  struct {
    const char* file;
    bool loaded;
    std::size_t words, idfs;
    int dim;
    Eigen::Index gram_size;
    double gram_corner;
  } const cases[] = {
      {"model", false, 1, 1, 2, 2, 1.5},
      // The factors of before, with the new missing_weight.
      {"model.conf", true, 1, 1, 3, 2, 3.0},
      {"dictionary", true, 0, 1, 3, 3, 1.0},
      {"idf", true, 1, 0, 3, 3, 1.0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.file);
    const TemporaryFolder folder;
    const LogCapture quiet;
    VelmoraPrivate engine;
    give_model(engine, folder);
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
    EXPECT_EQ(engine.fModelGram(0, 0), c.gram_corner);
  }
}

}  // namespace
