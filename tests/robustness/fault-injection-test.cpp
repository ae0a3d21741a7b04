// Whether an engine still works after a failure: of each allocation in turn, and of writing files.
// This program replaces the allocator, so sanitizer builds leave it out.
#include <cerrno>
#include <filesystem>
#include <functional>

#include <gtest/gtest.h>

#include "engine/velmora-private.hpp"
#include "kit/fixtures.hpp"

namespace {

long live = 0;       // blocks that are allocated and not yet freed
long countdown = 0;  // the allocation that takes it to 0 fails; 0 when none is to fail

bool fails() {
  if (countdown == 0 || --countdown != 0) {
    return false;
  }
  errno = ENOMEM;
  return true;
}

void* count(void* block) {
  live += block != nullptr;
  return block;
}

}  // namespace

// Under these names for everything that is loaded: operator new, Eigen, ICU, the C library itself.
// Clang hides them where it is not told otherwise.
#pragma GCC visibility push(default)
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t number, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void __libc_free(void* block);

void* malloc(std::size_t size) {
  return fails() ? nullptr : count(__libc_malloc(size));
}
void* calloc(std::size_t number, std::size_t size) {
  return fails() ? nullptr : count(__libc_calloc(number, size));
}
void* realloc(void* block, std::size_t size) {
  if (fails()) {
    return nullptr;
  }
  void* moved = __libc_realloc(block, size);
  live += (moved != nullptr && block == nullptr) - (moved == nullptr && block != nullptr);
  return moved;
}
void free(void* block) {
  live -= block != nullptr;
  __libc_free(block);
}
}
#pragma GCC visibility pop

namespace {

using namespace VX::Dialog;
using namespace test;

// Words of the model are their own stems in English, too; more than what strings hold in place.
const std::string kSentence = "Go up, go up, and up again: the caf\u00E9 is there, stop!";

class Faults : public testing::Test {
 protected:
  Faults() {
    zu::log::setLevel(zu::log::Level::silent);
    write_model(folder, "old");
    many_rules(folder, "enu");
    VelmoraPrivate engine;
    select(engine, "enu");
    compile(engine);
    std::filesystem::rename(folder.path("enu/model/newindex"), folder.path("enu/model/snap"));
    rules[4] = {"turn"};  // not in the snapshot
  }
  ~Faults() override { zu::log::setLevel(zu::log::Level::info); }

  bool select(VelmoraPrivate& engine, std::string language) const {
    std::string base = folder.path();
    return engine.xSetModel(base, language);
  }
  bool compile(VelmoraPrivate& engine) const {
    Rules given = rules;
    return engine.xLoadDialogVectors(given);
  }
  Matches answer(VelmoraPrivate& engine) const {
    Matches matches;
    engine.xActiveAllRules();
    EXPECT_EQ(engine.xMatchInput(kSentence, matches), 1);
    return matches;
  }

  TemporaryFolder folder;
  Rules rules = {{1, {kSentence, "go"}}, {2, {"walk up", "turn it"}}, {3, {"up up"}}};
};

TEST_F(Faults, AnyAllocationMayFail) {
  using Operation = std::function<bool(VelmoraPrivate&)>;
  const auto load = [&](bool merge) -> Operation {
    return [&, merge](auto& engine) {
      return engine.xLoadDialogVectorsFromFile("snap", rules, merge);
    };
  };
  const auto choose = [&](const char* language) -> Operation {
    return [&, language](auto& engine) { return select(engine, language); };
  };
  const Operation compilation = [&](auto& engine) { return compile(engine); };
  const Operation matching = [&](auto& engine) { return !answer(engine).empty(); };
  const Operation compiled = [&](auto& engine) { return select(engine, "enu") && compile(engine); };
  struct {
    const char* what;
    Operation before, run;
    int writes;  // an ofstream that runs out of memory only looks like a file that can't be written
  } const cases[] = {{"another model", choose("old"), choose("enu"), 0},
                     {"compilation", choose("enu"), compilation, 1},
                     {"index load", choose("enu"), load(false), 0},
                     {"merge load", choose("enu"), load(true), 1},
                     {"matching", compiled, matching, 0}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    Matches expected;
    int unnoticed = 0;
    bool reached = true;
    for (int failing = 0; reached; ++failing) {  // none fails in the first round
      const long live_before = live;
      {
        VelmoraPrivate engine;
        ASSERT_TRUE(c.before(engine));
        bool failed = false;
        countdown = failing;
        try {
          EXPECT_TRUE(c.run(engine));
        } catch (const std::bad_alloc&) {
          failed = true;
        }
        reached = countdown == 0;
        countdown = 0;
        unnoticed += failing != 0 && reached && !failed;
        try {
          Matches matches;
          engine.xActiveAllRules();
          engine.xMatchInput(kSentence, matches);  // whatever it has: no crash
        } catch (const std::out_of_range&) {
          EXPECT_TRUE(failed);
        }
        EXPECT_TRUE(c.run(engine));
        if (engine.fRuleVectors.empty()) {
          EXPECT_TRUE(compile(engine));
        }
        expected = failing == 0 ? answer(engine) : expected;
        EXPECT_EQ(answer(engine), expected) << failing;
      }
      if (failing == 0) {
        continue;  // what is allocated once and for all, and is no leak
      }
      EXPECT_EQ(live, live_before) << failing;
      if (!reached) {
        EXPECT_GT(failing, 20) << "the operation allocates more often than that";
      }
    }
    EXPECT_LE(unnoticed, c.writes);
  }
}

TEST_F(Faults, WritesMayFail) {
  VelmoraPrivate merged;
  ASSERT_TRUE(select(merged, "enu"));
  const std::string begin = "cd " + folder.path("enu/model") + " && ";
  for (const std::string obstacle :
       {"mkdir -p newindex/x index/x",
        "rm -r newindex index; ln -s /dev/full newindex; ln -s /dev/full index",
        "cd ..; rm -r model; touch model"}) {
    SCOPED_TRACE(obstacle);
    VelmoraPrivate engine;
    ASSERT_TRUE(select(engine, "enu"));
    ASSERT_EQ(std::system((begin + obstacle).c_str()), 0);
    EXPECT_TRUE(compile(engine));
    // A snapshot that went away leaves the tables of the load before.
    EXPECT_EQ(merged.xLoadDialogVectorsFromFile("snap", rules, true), obstacle[0] != 'c');
    EXPECT_EQ(merged.fRuleRows, engine.fRuleRows);
    EXPECT_EQ(answer(engine).size(), 4U);
    EXPECT_EQ(answer(merged).size(), 4U);
  }
}

}  // namespace
