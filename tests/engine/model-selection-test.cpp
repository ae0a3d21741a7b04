// Which model directory an engine takes, and what it has afterwards.
#include <filesystem>

#include <boost/filesystem/exception.hpp>
#include <gtest/gtest.h>

#include <zu/path.hpp>

#include "engine/velmora-private.hpp"
#include "kit/fixtures.hpp"

namespace {

using namespace VX::Dialog;
using namespace test;

TEST(SelectModel, TriesTheCallersDirectoryThenTheInstalledData) {
  const TemporaryFolder folder;
  use_installed_data(folder);
  write_model(folder, kInstalledRoot);
  write_model(folder, "own/tst");
  folder.write("file/tst", "");
  const std::tuple<std::string, std::string, std::size_t> cases[] = {
      {"own/", "own//tst/", 4},  // the base is not normalised
      {"file", "file/tst/", 0},  // a plain file counts as found
      {"none", "data/dialog/velmora/data/tst/", 4},
  };
  for (const auto& [own, root, words] : cases) {
    SCOPED_TRACE(own);
    const LogCapture log;
    VelmoraPrivate engine;
    std::string base = folder.path(own), language = kLanguage;
    EXPECT_TRUE(engine.xSetModel(base, language));
    EXPECT_EQ(engine.fModelRoot, folder.path(root));
    EXPECT_EQ(engine.fVocab.size(), words);
    const std::string line = "4 LibVelmora.Command xSetModel: SetModel(): " + base +
                             "/tst/ not found  using default model " + folder.path(root);
    EXPECT_EQ(log.lines("LibVelmora.Command"), own == "none" ? Lines{line} : Lines());
  }
}

TEST(SelectModel, KeepsTheEarlierModelButForTheLanguageWhenItFails) {
  const TemporaryFolder folder;
  const LogCapture log;
  VelmoraPrivate engine;
  give_model(engine, folder);
  std::string base = folder.path(), language = "nowhere", deep = base + std::string(300, 'x');
  EXPECT_FALSE(engine.xSetModel(base, language));
  EXPECT_EQ(log.lines().back(),
            "2 LibVelmora.Command xSetModel: SetModel(): Semantic model file not found: " +
                zu::path::findData("dialog", "velmora/data/nowhere/"));
  EXPECT_EQ(engine.fLanguage, "nowhere");
  EXPECT_THROW(engine.xSetModel(deep, base), boost::filesystem::filesystem_error);
  EXPECT_EQ(engine.fLanguage, base);
  EXPECT_EQ(engine.fModelRoot, base + "/tst/");
  EXPECT_EQ(engine.fVocab.size(), 4U);
}

TEST(LoadSemanticModels, KeepsWhatTheMissingFileWouldHaveReplaced) {
  const std::pair<std::string, double> cases[] = {
      {"model", 1.5},
      {"model.conf", 3.0},  // the factors of before, with the new missing_weight
      {"dictionary", 1.0},
      {"idf", 1.0},
  };
  for (const auto& [file, gram_corner] : cases) {
    SCOPED_TRACE(file);
    const TemporaryFolder folder;
    const LogCapture quiet;
    VelmoraPrivate engine;
    give_model(engine, folder);
    folder.write("tst/model/dictionary", "run\n");
    folder.write("tst/model/idf", "0 9\n");
    folder.write("tst/model/model", "3\n1\n1\n");
    folder.write("tst/model/model.conf", "1 3\n1 2 3 \n");
    std::filesystem::remove(folder.path("tst/model/" + file));
    EXPECT_EQ(engine.xLoadSemanticModels(), file != "model");
    EXPECT_EQ(engine.fVocab.size(), file == "dictionary" ? 0U : 1U);
    EXPECT_EQ(engine.fIdf.size(), file == "idf" ? 0U : 1U);
    EXPECT_EQ(engine.fModelGram(0, 0), gram_corner);
  }
}

}  // namespace
