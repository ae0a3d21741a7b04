// Logging by category: levels, records, handlers that come and go, also from several threads.
#include <pthread.h>

#include <atomic>
#include <cstdlib>
#include <mutex>
#include <stdexcept>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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
  EXPECT_TRUE(isVisible(addCategory("Test.Log"), Level::info));
  EXPECT_FALSE(isVisible(category, Level::verbose));
  EXPECT_FALSE(isVisible(category, Level::silent));
  EXPECT_FALSE(isVisible(nullptr, Level::fatal));

  setLevel("Test.Later", Level::debug);
  setLevel("Test.Log", Level::error);
  EXPECT_TRUE(isVisible(addCategory("Test.Later"), Level::debug));
  EXPECT_FALSE(isVisible(category, Level::warning));

  setLevel(Level::warning);
  EXPECT_FALSE(isVisible(addCategory("Test.Later"), Level::info));
  EXPECT_TRUE(isVisible(category, Level::warning));
  EXPECT_FALSE(isVisible(addCategory("Test.EvenLater"), Level::info));
}

TEST_F(Log, ARecordCarriesWhatTheSiteSaid) {
  LogStream(Level::warning, "a.cpp", "read", 7, category) << "x " << 0.1234567 << std::endl << 1e6;
  LogStream(Level::error, nullptr, nullptr, 0, category) << std::hex << 255;
  say(category, Level::verbose, "invisible");
  say(nullptr, Level::fatal, "no category");
  ASSERT_EQ(records.size(), 2U);
  const auto& [level, name, file, function, line, text] = records[0];
  EXPECT_EQ(level, Level::warning);
  EXPECT_EQ(name, "Test.Log");
  EXPECT_EQ(file, "a.cpp");
  EXPECT_EQ(function, "read");
  EXPECT_EQ(line, 7);
  EXPECT_EQ(text, "x 0.123457\n1e+06");
  EXPECT_EQ(records[1].file, "");
  EXPECT_EQ(records[1].function, "");
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
  const int thrower = addHandler([](const Record&) { throw std::runtime_error("broken"); });
  const int talker =
      addHandler([&](const Record& r) { say(category, Level::info, "re: " + r.text); });
  int once = 0;
  std::string once_heard;
  once = addHandler([&](const Record& r) {
    once_heard += r.text;
    removeHandler(once);
  });
  say(category, Level::info, "hello");
  removeHandler(thrower);
  removeHandler(talker);
  EXPECT_EQ(once_heard, "re: hello");  // of the two records, the inner one reaches it first
  const auto text = [](const char* expected) { return Field(&Record::text, expected); };
  EXPECT_THAT(records, ElementsAre(text("hello"), text("re: hello")));
}

// The thread turns cancellation off before it is due: sanitizers lose track of the stack otherwise.
TEST_F(Log, AThreadIsNotCancelledWhileItLogs) {
  const int canceller = addHandler([](const Record&) {
    pthread_cancel(pthread_self());
    pthread_testcancel();
  });
  int state_after = PTHREAD_CANCEL_DISABLE;
  std::thread([&] {
    say(category, Level::info, "last words");
    pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &state_after);
  }).join();
  removeHandler(canceller);
  EXPECT_EQ(state_after, PTHREAD_CANCEL_ENABLE);
  EXPECT_THAT(records, ElementsAre(Field(&Record::text, "last words")));
}

// What a removed handler used is gone at once here, so a late call is a use after free.
TEST_F(Log, ARemovedHandlerIsNeverCalledAgain) {
  std::vector<std::jthread> threads;
  for (int thread = 0; thread != 2; ++thread) {
    threads.emplace_back([&](std::stop_token stop) {
      while (!stop.stop_requested()) {
        say(category, Level::info, "busy");
      }
    });
  }
  for (int round = 0; round != 100; ++round) {
    auto alive = std::make_unique<std::atomic<int>>(0);
    const int id = addHandler([&calls = *alive](const Record&) { ++calls; });
    removeHandler(id);
    const int calls_at_removal = *alive;
    std::this_thread::yield();
    EXPECT_EQ(*alive, calls_at_removal);
  }
  threads.clear();
}

}  // namespace
}  // namespace zu::log
