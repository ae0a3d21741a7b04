// The program as a user meets it: what it makes, what it says, and what it leaves behind.
#include <algorithm>
#include <cstdlib>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kit/fixtures.hpp"
#include "kit/program-run.hpp"
#include "random.hpp"

namespace velmora::trainer {
namespace {

namespace fs = std::filesystem;

// A corpus of stems with everything double, from two sources: words of ten topics, picked at
// random.
std::string many_stems(int documents) {
  std::string text;
  for (int document = 0; document != documents; ++document) {
    std::string line = document % 3 == 0 ? "talk\t" : "book\t";
    for (int word = 0; word != 3 + document % 9; ++word) {
      const std::uint64_t bits = random_bits(3, static_cast<std::uint64_t>(document * 16 + word));
      const int pick = static_cast<int>(bits / 3 % 400);
      const bool any_topic = bits % 3 == 0;
      line += "w" + std::to_string(any_topic ? pick : document % 10 * 40 + pick % 20) + " ";
    }
    text += line + "\n";
  }
  return text + text;
}

class Program : public testing::Test {
 protected:
  // Runs `velmora-train <arguments>` in the directory of the test; returns the exit status, and
  // what it wrote to standard error in `said`.
  int run(const std::string& arguments, const std::string& before = "") {
    return run_shell(before + " " VELMORA_TRAIN " " + arguments);
  }

  // Runs it on the corpus, which it gets only after `meanwhile` (a shell command) has run.
  int run_with_pause(const std::string& arguments, const std::string& meanwhile) {
    directory.write(
        "run",
        "mkfifo pipe; marks() { ls *.partial-*/.velmora-train 2>messages; }\n"
        "before=$(marks)\n" VELMORA_TRAIN " --stemmed --dim 5 " +
            arguments +
            " pipe & program=$!\n"
            "until ! kill -0 $program || { now=$(marks) && [ \"$now\" != \"$before\" ]; }\n"
            "do sleep 0.02; done 2>messages\n" +
            meanwhile +
            "\n(timeout 3 sh -c 'cat corpus >pipe') 2>messages\n"
            "wait $program; status=$?; rm -f pipe messages run; exit $status\n");
    return run_shell("sh run");
  }

  // The exit status of a shell command that runs in the directory of the test.
  int run_shell(const std::string& command) {
    const ProgramResult result = run_program(directory, command);
    said = result.err;
    return result.status;
  }

  // Nothing but what the test itself put there.
  void expect_only(const std::set<std::string>& names) {
    std::set<std::string> found;
    for (const auto& entry : fs::directory_iterator(directory.path())) {
      found.insert(entry.path().filename().string());
    }
    EXPECT_EQ(found, names);
  }

  std::string model_of(const std::string& name) {
    std::string files;
    for (const char* file : {"dictionary", "idf", "model", "model.conf"}) {
      EXPECT_TRUE(fs::is_regular_file(directory.path(name + "/" + file))) << name << "/" << file;
      files += directory.read(name + "/" + file) + "\f";
    }
    return files;
  }

  test::TemporaryFolder directory;
  std::string said;
};

TEST_F(Program, ThreadsAndInterruptionsGiveTheSameModel) {
  directory.write("corpus", many_stems(1500));
  const std::string common = "--stemmed corpus --dim 20 --weight talk=3 --everyday talk ";
  ASSERT_EQ(run(common + "--threads 1 --output one"), 0) << said;
  EXPECT_THAT(said, testing::HasSubstr("sweep 3 of 3: objective "));
  const std::string model = model_of("one");
  ASSERT_EQ(run(common + "--threads 3 --output three --quiet"), 0) << said;
  EXPECT_EQ(said, "");
  EXPECT_EQ(model_of("three"), model);

  ASSERT_EQ(run(common + "--sweeps 1 --checkpoint point --output early"), 0) << said;
  EXPECT_NE(model_of("early"), model);
  ASSERT_EQ(run(common + "--checkpoint point --resume --output resumed"), 0) << said;
  EXPECT_EQ(model_of("resumed"), model);
  ASSERT_EQ(run(common + "--checkpoint point --resume --seed 2 --output other"), 1);
  EXPECT_THAT(said, testing::HasSubstr("belongs to other corpora or other settings"));
  ASSERT_EQ(run(common + "--seed 2 --output other"), 0) << said;
  EXPECT_NE(model_of("other"), model);
  expect_only({"corpus", "one", "three", "early", "point", "resumed", "other"});
}

// A file of numpy.save with so many rows of three 8-bit integers.
std::string many_vectors(std::size_t rows) {
  std::string header =
      "{'descr': '|i1', 'fortran_order': False, 'shape': (" + std::to_string(rows) + ", 3), }";
  header.resize(118, ' ');
  std::string file = std::string("\x93NUMPY\x01\x00\x76\x00", 10) + header;
  for (std::size_t number = 0; number != 3 * rows; ++number) {
    file += static_cast<char>(random_bits(7, number) % 256);
  }
  return file;
}

TEST_F(Program, TeachersAndJoinedModelsGiveTheSameBytesAgain) {
  directory.write("corpus", many_stems(600));
  directory.write("vectors", many_vectors(1200));
  const std::string taught = "--stemmed corpus --teacher vectors --dim 2 --digits 2 ";
  ASSERT_EQ(run(taught + "--threads 1 --output one"), 0) << said;
  ASSERT_EQ(run(taught + "--threads 3 --output three --quiet"), 0) << said;
  EXPECT_EQ(model_of("three"), model_of("one"));
  ASSERT_EQ(run("--stemmed corpus --dim 5 --output swept"), 0) << said;

  ASSERT_EQ(run("--join one=1 --join swept=0.5 --lambda 2 --output joined"), 0) << said;
  EXPECT_EQ(directory.read("joined/dictionary"), directory.read("one/dictionary"));
  EXPECT_THAT(directory.read("joined/model"), testing::StartsWith("7\n"));
  ASSERT_EQ(run("--stemmed corpus --vocabulary 9 --dim 5 --output few"), 0) << said;
  EXPECT_EQ(run("--join one=1 --join few=1 --output new"), 1);
  EXPECT_THAT(said, testing::HasSubstr("joined models need the same words"));
  expect_only({"corpus", "vectors", "one", "three", "swept", "joined", "few"});
}

struct FailureCase {
  const char* arguments;
  int status;
  const char* message;
};

const FailureCase kFailureCases[] = {
    {"", 2, "CORPUS is required"},
    {"--output new corpus", 2, "--language is required"},
    {"--language eng --output new corpus", 2, "eng not in {enu,frf,jpj}"},
    {"--stemmed --output new --resume corpus", 2, "--resume needs --checkpoint"},
    {"--help >/dev/full", 1, "No space left on device"},
    {"--stemmed --output new --checkpoint corpus corpus", 1, "is not a checkpoint"},
    {"--stemmed --output new latin", 1, "latin:2: ill-formed UTF-8"},
    {"--stemmed --output new --dim 0 corpus", 2, "'0' is not a number from 1 to 2000"},
    {"--join model=1 --output new corpus", 2, "--join reads no CORPUS"},
    {"--join model=heavy --output new", 2, "is not NAME=W"},
    {"--join absent=1 --output new", 1, "absent/dictionary: cannot be opened"},
    {"--stemmed --teacher corpus --refine-steps 9 --output new corpus", 2, "--refine-steps"},
    {"--stemmed --teacher corpus --output new corpus", 1, "is not a file of numpy.save"},
    {"--stemmed --output new absent", 1, "absent: No such file or directory"},
    {"--stemmed --output new empty", 1, "the corpora hold no words"},
    {"--stemmed --output new --min-count 99999 corpus", 1, "fewer than two words"},
    {"--stemmed --output new --everyday tlak corpus", 1, "no document has the label \"tlak\""},
    {"--stemmed --output new --weight talk=0 --weight book=0 corpus", 1, "weight 0"},
    {"--stemmed --output corpus corpus", 1, "a file of that name is there"},
    {"--stemmed --output model corpus", 1, "--force replaces a model"},
    {"--stemmed --output . --force corpus", 1, "which belongs to no model; not replaced"},
    {"--stemmed --output new --checkpoint corpus --resume corpus", 1, "is not a checkpoint"},
    {"--stemmed --stems-only /dev/full corpus", 1, "No space left on device"},
};

TEST_F(Program, FailuresAreToldAndLeaveNothing) {
  directory.write("corpus", many_stems(300));
  directory.write("empty", "a\t\n\n");
  directory.write("latin", "a\tgo\nb\tca\xe9 ra\n");
  ASSERT_EQ(run("--stemmed --dim 5 --output model corpus"), 0) << said;
  const std::string model = model_of("model");
  for (const FailureCase& c : kFailureCases) {
    SCOPED_TRACE(c.arguments);
    EXPECT_EQ(run(c.arguments), c.status);
    EXPECT_THAT(said, testing::HasSubstr(c.message));
    expect_only({"corpus", "empty", "latin", "model"});
  }
  EXPECT_EQ(model_of("model"), model);
  EXPECT_EQ(run("--stemmed --dim 6 --output model/ --force corpus"), 0) << said;
  EXPECT_NE(model_of("model"), model);
}

const std::pair<const char*, const char*> kAppearances[] = {
    {"mkdir new; echo mine >new/file", "it is not empty"},
    {"mkdir -p new/dictionary; echo mine >new/file", "it is not empty"},
    {"echo mine >new", "Not a directory"},
};

TEST_F(Program, WhatAppearsDuringTheTrainingStays) {
  directory.write("corpus", many_stems(300));
  for (const auto& [meanwhile, message] : kAppearances) {
    SCOPED_TRACE(meanwhile);
    EXPECT_EQ(run_with_pause("--output new", meanwhile), 1);
    EXPECT_THAT(said, testing::HasSubstr(message));
    EXPECT_EQ(directory.read(fs::is_directory(directory.path("new")) ? "new/file" : "new"),
              "mine\n");
    expect_only({"corpus", "new"});
    fs::remove_all(directory.path("new"));
  }
  ASSERT_EQ(run("--stemmed --dim 4 --output new corpus"), 0) << said;
  const std::string model = model_of("new");
  EXPECT_EQ(run_with_pause("--output new --force", "echo mine >new/file"), 1);
  EXPECT_EQ(directory.read("new/file"), "mine\n");
  EXPECT_EQ(model_of("new"), model);
  expect_only({"corpus", "new"});
  fs::remove(directory.path("new/file"));
  EXPECT_EQ(run("--stemmed --dim 5 --output new/ --force corpus"), 0) << said;
  EXPECT_NE(model_of("new"), model);
  EXPECT_FALSE(fs::exists(directory.path("new/.velmora-train")));
}

TEST_F(Program, OneOfManyTrainingsToOnePlaceSucceeds) {
  directory.write("corpus", many_stems(300));
  const std::string runs = "for seed in 1 2 3 4; do (" VELMORA_TRAIN
                           " --quiet --stemmed --dim 5 --output a/b/new --seed $seed corpus "
                           "2>>ignored; echo $? >>statuses) & done; wait";
  ASSERT_EQ(run_shell("{ " + runs + "; }"), 0) << said;
  const std::string statuses = directory.read("statuses");
  EXPECT_EQ(std::count(statuses.begin(), statuses.end(), '0'), 1) << statuses;
  EXPECT_EQ(std::count(statuses.begin(), statuses.end(), '1'), 3) << statuses;
  model_of("a/b/new");
  EXPECT_EQ(std::distance(fs::directory_iterator(directory.path("a/b")), {}), 1);
}

TEST_F(Program, WhatAKilledRunLeavesIsClearedByTheNext) {
  directory.write("corpus", many_stems(300));
  directory.write("new.partial-backup/dictionary", "mine");
  EXPECT_EQ(run_with_pause("--output new", "kill -KILL $program"), 137);
  std::string leftover;
  for (const auto& entry : fs::directory_iterator(directory.path())) {
    const std::string name = entry.path().filename().string();
    leftover = name.starts_with("new.partial-") && name != "new.partial-backup" ? name : leftover;
  }
  EXPECT_TRUE(fs::exists(directory.path(leftover + "/.velmora-train"))) << leftover;
  // The next run to the same place clears it, and leaves the directory of a third that still runs.
  EXPECT_EQ(run_with_pause("--output new",
                           VELMORA_TRAIN " --stemmed --dim 5 --output new corpus 2>messages"),
            1);
  EXPECT_THAT(said, testing::HasSubstr("it is not empty"));
  model_of("new");
  expect_only({"corpus", "new", "new.partial-backup"});
}

// A limit on the size of files stands for a full disk: every write beyond it fails. As the limit
// grows it strikes at later and larger files, the last of which is told.
TEST_F(Program, AFullDiskAtAnyMomentLeavesNoModel) {
  directory.write("corpus", many_stems(1500));
  const std::pair<std::string, std::string> last_files[] = {
      {"--dim 200", "\"model.conf\""}, {"--dim 90 --checkpoint point", "point.partial"}};
  for (const auto& [arguments, last_file] : last_files) {
    SCOPED_TRACE(arguments);
    std::string last_message;
    int status = 1;
    for (int blocks = 1; status == 1 && blocks < 10000; blocks = blocks * 9 / 8 + 1) {
      last_message = said;
      status = run("--stemmed --quiet --sweeps 1 --output new corpus " + arguments,
                   "trap '' XFSZ; ulimit -f " + std::to_string(blocks) + ";");
      if (status == 1) {
        EXPECT_THAT(said, testing::AnyOf(testing::HasSubstr("File too large"),
                                         testing::HasSubstr("is the disk full?")));
        expect_only({"corpus"});
      }
    }
    EXPECT_EQ(status, 0);
    EXPECT_THAT(last_message, testing::HasSubstr(last_file));
    model_of("new");
    fs::remove_all(directory.path("new"));
  }
}

TEST_F(Program, ASignalEndsTheRunAndKeepsTheCheckpoint) {
  directory.write("corpus", many_stems(1500));
  const std::string common =
      "--stemmed --dim 20 --checkpoint point --sweeps 1000 --output new corpus";
  for (const char* signal : {"INT", "TERM"}) {
    fs::remove(directory.path("point"));
    const std::string watch =
        "while [ ! -s point ]; do sleep 0.05; done; kill -" + std::string(signal) + " $program";
    const int status = run_shell("{ " VELMORA_TRAIN " " + common + " & program=$!; " + watch +
                                 "; wait $program; }");
    EXPECT_EQ(status, signal == std::string("INT") ? 130 : 143);
    EXPECT_THAT(said, testing::HasSubstr("interrupted before the output was written"));
    expect_only({"corpus", "point"});
  }
}

}  // namespace
}  // namespace velmora::trainer
