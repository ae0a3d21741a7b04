// Strict loading of models, and what a model tells about sentences.
#include <sys/stat.h>

#include <cmath>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <velmora/velmora.hpp>

#include "kit/small-model.hpp"

namespace {

using namespace test;
using velmora::Model;

TEST(Model, TellsWhatItLoaded) {
  const TemporaryFolder folder;
  const Model model = Model::load(write_small_model(folder), "enu");
  EXPECT_EQ(model.language(), "enu");
  EXPECT_EQ(model.directory(), folder.path("model"));
  EXPECT_EQ(model.dimension(), 2U);
  EXPECT_EQ(model.vocabulary_size(), 4U);
  EXPECT_TRUE(model.knows("walk"));
  EXPECT_FALSE(model.knows("walking"));
  EXPECT_EQ(model.stems("Walking up, UP to x\xFF"), (Lines{"to", "up", "walk", "x"}));
}

TEST(Model, VectorsHaveLength1OrAreZero) {
  const Model model = small_model();
  const std::vector<double> vector = model.vector("stop and go");
  EXPECT_NEAR(std::hypot(vector.at(0), vector.at(1)), 1.0, 1e-15);
  EXPECT_EQ(model.vector("nothing known"), (std::vector<double>{0.0, 0.0}));
}

struct FileCase {
  const char* file;
  const char* text;
  const char* message;
};

// Each would give wrong answers or worse if it were taken.
const FileCase kFileCases[] = {
    {"model", "", "model/model:1: the file ends: expected the number of dimensions"},
    {"model", "x\n0.5\n0.5\n", "model/model:1: 'x': expected the number of dimensions, 1 or more"},
    {"model", "0\n0.5\n0.5\n", "model/model:1: expected the number of dimensions, 1 or more"},
    {"model", "2\n0\n0.5\n", "model/model:2: expected lambda, a number above 0"},
    {"model", "2\nnan\n0.5\n", "model/model:2: 'nan': expected lambda, a number above 0"},
    {"model", "2\n0.5\n1.5\n", "model/model:3: expected the weight of missing words, from 0 to 1"},
    {"model", "2\n0.5\n", "model/model:3: the file ends: expected the weight of missing words"},
    {"model", "2\n0.5\n0.5\n7\n", "model/model:4: '7': expected the end of the file"},
    {"model", "3\n0.5\n0.5\n",
     "model/model.conf:1: 2 dimensions: expected 3, as the file \"model\" says"},
    {"dictionary", "", "model/dictionary: nothing in it: expected a word on each line"},
    {"dictionary", "go\n\nup\nwalk\n", "model/dictionary:2: blank line: expected a word"},
    {"dictionary", "go\nup\ngo\nwalk\n",
     "model/dictionary:3: 'go' comes twice: expected another word"},
    {"dictionary", "go\nst\xFFp\nup\nwalk\n",
     "model/dictionary:2: ill-formed UTF-8: expected a word in UTF-8"},
    {"dictionary", "go\nstop it\nup\nwalk\n",
     "model/dictionary:2: 'it': expected the end of the line"},
    // A dictionary of another model.
    {"dictionary", "go\nstop\nup\n", "model/idf:4: '3': expected the end of the file"},
    {"idf", "0 2\n1 1\n2 0.5\n",
     "model/idf:4: the file ends: expected a word id and its idf (the dictionary has 4 words)"},
    {"idf", "0 2\n1 1\n1 0.5\n3 4\n", "model/idf:3: word id 1 comes twice: expected each once"},
    {"idf", "0 2\n1 1\n4 0.5\n3 4\n",
     "model/idf:3: word id 4: expected one below 4 (the dictionary has 4 words)"},
    {"idf", "0 2\n1 inf\n2 0.5\n3 4\n",
     "model/idf:2: 'inf': expected the idf of the word, a finite number"},
    {"model.conf", "5 2\n1 0\n0 1\n1 1\n-1 0.5\n",
     "model/model.conf:1: 5 words: expected 4, as many as the dictionary has"},
    {"model.conf", "4 2\n1 0\n0 1\n1 1\n",
     "model/model.conf:5: the file ends: expected the factors of 4 words"},
    {"model.conf", "4 2\n1 0\n0\n1 1\n-1 0.5\n",
     "model/model.conf:3: nothing: expected 2 finite numbers"},
    {"model.conf", "4 2\n1 0\n0 1 2\n1 1\n-1 0.5\n",
     "model/model.conf:3: '2': expected the end of the line"},
    {"model.conf", "4 2\n1 0\n0 1\n1 1e999\n-1 0.5\n",
     "model/model.conf:4: '1e999': expected 2 finite numbers"},
    {"model.conf", "4 2\n1 0\n0 1\n1 1\n-1 0.5\n1 1\n",
     "model/model.conf:6: '1': expected the end of the file"},
};

TEST(Model, NamesFileLineAndWhatWasExpected) {
  for (const FileCase& c : kFileCases) {
    SCOPED_TRACE(c.message);
    const TemporaryFolder folder;
    write_small_model(folder);
    folder.write(std::string("model/") + c.file, c.text);
    EXPECT_EQ(error_of([&] { Model::load(folder.path("model"), "enu"); }, folder.path()),
              c.message);
  }
}

TEST(Model, AHeaderAllocatesNoMoreThanItsFileCanFill) {
  const TemporaryFolder folder;
  write_small_model(folder);
  folder.write("model/model", "2000000000\n0.5\n0.5\n");
  folder.write("model/model.conf", "4 2000000000\n1 0\n");
  EXPECT_EQ(error_of([&] { Model::load(folder.path("model"), "enu"); }, folder.path()),
            "model/model.conf:1: the file is too short: expected 4 lines of 2000000000 numbers");
}

TEST(Model, FilesMustBeThereAndRegular) {
  const TemporaryFolder folder;
  const auto load = [&] { Model::load(folder.path("model"), "enu"); };
  EXPECT_EQ(error_of(load, folder.path()),
            "model: is not a folder: expected one with the files of a model");
  write_small_model(folder);
  std::filesystem::remove(folder.path("model/idf"));
  EXPECT_EQ(error_of(load, folder.path()), "model/idf: is missing: expected a file of the model");
  mkfifo(folder.path("model/idf").c_str(), 0600);
  EXPECT_EQ(error_of(load, folder.path()),
            "model/idf: is not a regular file: expected a file of the model");
}

TEST(Model, LanguagesThatAreNotThereAreErrorsWithThoseThatAre) {
  const TemporaryFolder folder;
  use_installed_data(folder);
  const std::string model = write_small_model(folder);
  std::filesystem::create_directories(folder.path("data/dialog/velmora/data/frf"));
  std::filesystem::rename(model, folder.path("data/dialog/velmora/data/frf/model"));
  EXPECT_THAT(Model::installed_languages(), testing::Contains("frf"));
  EXPECT_EQ(Model::installed("frf").vocabulary_size(), 4U);
  EXPECT_THAT(error_of([] { Model::installed("xyz"); }),
              testing::HasSubstr("unknown language 'xyz': expected one of enu, frf, jpj"));
  EXPECT_THAT(error_of([&] { Model::load(model, "../enu"); }), testing::HasSubstr("'../enu'"));
}

}  // namespace
