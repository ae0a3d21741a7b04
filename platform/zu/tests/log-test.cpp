// Logging by category: levels, records, handlers that come and go, also from several threads.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <mutex>
#include <stdexcept>
#include <thread>
#include <zu/log.hpp>

namespace zu::log {
namespace {

using ::testing::ElementsAre;
using ::testing::Field;
using ::testing::HasSubstr;

// Collects all records, and keeps the console silent.
class Log : public ::testing::Test {
 protected:
  Log() {
    setConsole(false);
    setLevel(Level::info);
  }
  ~Log() override { removeHandler(collector); }

  Category* category = addCategory("Test.Log");
  std::vector<Record> records;
  std::mutex mutex;
  const int collector = addHandler([this](const Record& record) {
    std::lock_guard lock(mutex);
    records.push_back(record);
  });
};

void say(const Category* category, Level level, const std::string& text) {
  LogStream(level, "", "say", 0, category) << text;
}

TEST_F(Log, LevelsHoldForAllOneAndLaterCategories) {
  EXPECT_EQ(addCategory("Test.Log"), category);
  EXPECT_TRUE(isVisible(category, Level::info));
  EXPECT_FALSE(isVisible(category, Level::verbose));
  EXPECT_FALSE(isVisible(category, Level::silent));
  EXPECT_FALSE(isVisible(nullptr, Level::fatal));

  setLevel("Test.Later", Level::debug);
  setLevel("Test.Log", Level::error);
  EXPECT_TRUE(isVisible(addCategory("Test.Later"), Level::debug));
  EXPECT_TRUE(isVisible(category, Level::error));
  EXPECT_FALSE(isVisible(category, Level::warning));

  setLevel(Level::warning);
  EXPECT_FALSE(isVisible(addCategory("Test.Later"), Level::info));
  EXPECT_TRUE(isVisible(category, Level::warning));
  EXPECT_FALSE(isVisible(addCategory("Test.EvenLater"), Level::info));

  setLevel(Level::silent);
  EXPECT_FALSE(isVisible(category, Level::fatal));
}

TEST_F(Log, ARecordCarriesWhatTheSiteSaid) {
  LogStream(Level::warning, "a.cpp", "read", 7, category) << "x " << 0.1234567 << std::endl << 1e6;
  LogStream(Level::error, nullptr, nullptr, 0, category) << std::hex << 255;
  say(category, Level::verbose, "invisible");
  say(nullptr, Level::fatal, "no category");
  ASSERT_EQ(records.size(), 2U);
  const auto& [level, name, file, function, line, text] = records[0];
  EXPECT_EQ(std::tie(level, line), std::tuple(Level::warning, 7));
  EXPECT_EQ(std::tie(name, file, function), std::tuple("Test.Log", "a.cpp", "read"));
  EXPECT_EQ(text, "x 0.123457\n1e+06");
  EXPECT_EQ(records[1].file + records[1].function, "");
  EXPECT_EQ(records[1].text, "ff");
}

TEST_F(Log, TheConsoleIsStandardErrorAndCanBeTurnedOff) {
  testing::internal::CaptureStderr();
  setConsole(true);
  say(category, Level::error, "heard {}");
  setConsole(false);
  say(category, Level::error, "unheard");
  const std::string console = testing::internal::GetCapturedStderr();
  EXPECT_THAT(console, HasSubstr("error Test.Log say: heard {}\n"));
  EXPECT_THAT(console, Not(HasSubstr("unheard")));
}

TEST_F(Log, AHandlerMayThrowLogAndRemoveItself) {
  EXPECT_EQ(addHandler(nullptr), -1);
  const int thrower = addHandler([](const Record&) { throw std::runtime_error("broken"); });
  const int talker =
      addHandler([&](const Record& r) { say(category, Level::info, "re: " + r.text); });
  int once_calls = 0;
  int once = 0;
  once = addHandler([&](const Record&) {
    ++once_calls;
    removeHandler(once);
  });
  say(category, Level::info, "hello");
  removeHandler(thrower);
  removeHandler(talker);
  removeHandler(-1);
  EXPECT_EQ(once_calls, 1);
  const auto text = [](const char* expected) { return Field(&Record::text, expected); };
  EXPECT_THAT(records, ElementsAre(text("hello"), text("re: hello")));
}

// What a removed handler used is gone at once here, so a late call is a use after free.
TEST_F(Log, ARemovedHandlerIsNeverCalledAgain) {
  std::atomic<bool> stop = false;
  std::vector<std::thread> threads;
  for (int thread = 0; thread != 2; ++thread) {
    threads.emplace_back([&] {
      while (!stop) {
        say(category, Level::info, "busy");
      }
    });
  }
  for (int round = 0; round != 100; ++round) {
    auto alive = std::make_unique<std::atomic<int>>(0);
    const int id = addHandler([&calls = *alive](const Record&) { ++calls; });
    while (round % 10 == 0 && *alive == 0) {
      std::this_thread::yield();
    }
    removeHandler(id);
    const int calls_at_removal = *alive;
    std::this_thread::yield();
    EXPECT_EQ(*alive, calls_at_removal);
  }
  stop = true;
  for (std::thread& thread : threads) {
    thread.join();
  }
}

// Older than all that logging keeps, so it goes last.
struct LogsAtExit {
  ~LogsAtExit() {
    if (is_armed) {
      say(addCategory("Test.Exit"), Level::info, "the last record");
    }
  }
  bool is_armed = false;
} logs_at_exit;

TEST_F(Log, WorksWhileStaticObjectsAreDestroyed) {
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  const auto leave = [] {
    setConsole(true);
    logs_at_exit.is_armed = true;
    std::exit(0);
  };
  EXPECT_EXIT(leave(), testing::ExitedWithCode(0), "info Test.Exit say: the last record");
}

}  // namespace
}  // namespace zu::log
