#include <pthread.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <condition_variable>
#include <locale>
#include <map>
#include <mutex>
#include <sstream>
#include <utility>
#include <vector>

#include <spdlog/sinks/stdout_sinks.h>

#include <zu/log.hpp>

namespace zu::log {

class Category {
 public:
  Category(std::string category_name, Level start_level)
      : name(std::move(category_name)), level(static_cast<int>(start_level)) {}

  const std::string name;
  std::atomic<int> level;
};

namespace {

// Neither registry is ever destroyed, so that a library may log from its own static objects, first
// and last.
struct Categories {
  std::mutex mutex;
  std::map<std::string, std::unique_ptr<Category>> by_name;
  Level level_of_new_ones = Level::info;
};

Categories& categories() {
  static Categories& registry = *new Categories;
  return registry;
}

// One registered handler. `handler` and `id` never change while it is listed.
struct Listener {
  int id;
  Handler handler;
  bool removed = false;  // under Listeners::mutex, as is the count
  int calls_under_way = 0;
};
using ListenerList = std::vector<std::shared_ptr<Listener>>;

struct Listeners {
  std::mutex mutex;
  std::condition_variable call_ended;
  // Replaced as a whole, so that a record goes through the list as it was when it was logged.
  std::shared_ptr<const ListenerList> list = std::make_shared<const ListenerList>();
  int last_id = 0;
};

Listeners& listeners() {
  static Listeners& registry = *new Listeners;
  return registry;
}

// One handler call on this thread. The chain of them shows which handlers logged a record.
class HandlerCall {
 public:
  // Check entered() before the call: a handler that has been removed meanwhile, or is running on
  // this thread already, must not be called.
  explicit HandlerCall(Listener& called) : listener(called), outer(innermost) {
    for (const HandlerCall* call = outer; call != nullptr; call = call->outer) {
      if (&call->listener == &listener) {
        return;
      }
    }
    std::lock_guard lock(listeners().mutex);
    if (listener.removed) {
      return;
    }
    ++listener.calls_under_way;
    innermost = this;
  }
  ~HandlerCall() {
    if (!entered()) {
      return;
    }
    innermost = outer;
    std::lock_guard lock(listeners().mutex);
    --listener.calls_under_way;
    listeners().call_ended.notify_all();
  }
  HandlerCall(const HandlerCall&) = delete;
  HandlerCall& operator=(const HandlerCall&) = delete;

  bool entered() const { return innermost == this; }
  static bool any_on_this_thread() { return innermost != nullptr; }

 private:
  // Without a destructor, so that it serves also while the thread ends.
  static thread_local const HandlerCall* innermost;

  Listener& listener;
  const HandlerCall* outer;
};
thread_local const HandlerCall* HandlerCall::innermost = nullptr;

void call_handlers(const Record& record) {
  std::shared_ptr<const ListenerList> list;
  {
    std::lock_guard lock(listeners().mutex);
    list = listeners().list;
  }
  for (const std::shared_ptr<Listener>& listener : *list) {
    HandlerCall call(*listener);
    if (!call.entered()) {
      continue;
    }
    try {
      listener->handler(record);
    } catch (...) {
      // The code that logs can do nothing about it, and the next listener still gets its record.
    }
  }
}

std::atomic<bool> console_enabled{true};

void write_to_console(const Record& record) {
  struct Naming {
    const char* name;
    spdlog::level::level_enum level;
  };
  static constexpr std::array<Naming, 7> kNamings = {{{"silent", spdlog::level::off},
                                                      {"fatal", spdlog::level::critical},
                                                      {"error", spdlog::level::err},
                                                      {"warning", spdlog::level::warn},
                                                      {"info", spdlog::level::info},
                                                      {"verbose", spdlog::level::debug},
                                                      {"debug", spdlog::level::trace}}};
  static spdlog::sinks::stderr_sink_mt& sink = [&]() -> spdlog::sinks::stderr_sink_mt& {
    auto* created = new spdlog::sinks::stderr_sink_mt;
    created->set_pattern("%Y-%m-%d %H:%M:%S.%e [%t] %v");
    return *created;
  }();
  // spdlog has other names for the two most talkative levels, so the line holds ours.
  const Naming& naming = kNamings[static_cast<std::size_t>(record.level)];
  const std::string line = std::string(naming.name) + " " + record.category +
                           (record.function.empty() ? "" : " " + record.function) + ": " +
                           record.text;
  sink.log(spdlog::details::log_msg(record.category, naming.level, line));
}

}  // namespace

Category* addCategory(const std::string& name) {
  Categories& registry = categories();
  std::lock_guard lock(registry.mutex);
  std::unique_ptr<Category>& category = registry.by_name[name];
  if (category == nullptr) {
    category = std::make_unique<Category>(name, registry.level_of_new_ones);
  }
  return category.get();
}

bool isVisible(const Category* category, Level level) noexcept {
  return category != nullptr && level > Level::silent && level <= Level::debug &&
         static_cast<int>(level) <= category->level.load(std::memory_order_relaxed);
}

void setLevel(Level level) {
  Categories& registry = categories();
  std::lock_guard lock(registry.mutex);
  registry.level_of_new_ones = level;
  for (const auto& [name, category] : registry.by_name) {
    category->level = static_cast<int>(level);
  }
}

void setLevel(const std::string& category, Level level) {
  addCategory(category)->level = static_cast<int>(level);
}

int addHandler(Handler handler) {
  if (handler == nullptr) {
    return -1;
  }
  Listeners& registry = listeners();
  auto listener = std::make_shared<Listener>();
  listener->handler = std::move(handler);
  std::lock_guard lock(registry.mutex);
  auto longer = std::make_shared<ListenerList>(*registry.list);
  longer->push_back(listener);
  listener->id = ++registry.last_id;
  registry.list = std::move(longer);
  return listener->id;
}

void removeHandler(int id) {
  Listeners& registry = listeners();
  std::shared_ptr<Listener> listener;
  std::unique_lock lock(registry.mutex);
  auto shorter = std::make_shared<ListenerList>(*registry.list);
  const auto found = std::find_if(shorter->begin(), shorter->end(),
                                  [id](const auto& listed) { return listed->id == id; });
  if (found == shorter->end()) {
    return;
  }
  listener = *found;
  shorter->erase(found);
  listener->removed = true;
  registry.list = std::move(shorter);
  if (HandlerCall::any_on_this_thread()) {
    return;  // the call to wait for may be the caller's own
  }
  registry.call_ended.wait(lock, [&] { return listener->calls_under_way == 0; });
  lock.unlock();
  // Other threads may hold the list a little longer; what the handler owns goes now.
  listener->handler = nullptr;
}

void setConsole(bool enabled) {
  console_enabled = enabled;
}

namespace {

// Cancelling a thread unwinds its stack, and neither a destructor nor a handler's catch-all lets
// that pass: the process would abort. What is asked for meanwhile happens after the record.
class CancellationDeferred {
 public:
  CancellationDeferred() { pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &state_before_); }
  ~CancellationDeferred() { pthread_setcancelstate(state_before_, nullptr); }
  CancellationDeferred(const CancellationDeferred&) = delete;
  CancellationDeferred& operator=(const CancellationDeferred&) = delete;

 private:
  int state_before_ = PTHREAD_CANCEL_ENABLE;
};

}  // namespace

struct LogStream::Impl {
  Record record;
  std::ostringstream text;
};

LogStream::LogStream(Level level, const char* file, const char* function, int line,
                     const Category* category) {
  if (!isVisible(category, level)) {
    return;
  }
  impl_ = std::make_unique<Impl>();
  impl_->record = {
      level, category->name, file != nullptr ? file : "", function != nullptr ? function : "", line,
      {}};
  impl_->text.imbue(std::locale::classic());
  text_ = &impl_->text;
}

LogStream::~LogStream() {
  if (impl_ == nullptr) {
    return;
  }
  const CancellationDeferred deferred;
  try {
    impl_->record.text = impl_->text.str();
    if (console_enabled) {
      write_to_console(impl_->record);
    }
  } catch (...) {
    // A full disk or a closed standard error must not bring the host down.
  }
  call_handlers(impl_->record);
}

}  // namespace zu::log
