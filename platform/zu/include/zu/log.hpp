// Logging by category: levels, records, and handlers that receive them.
//
// Every function here may be called from any thread, also while other libraries of the process are
// being initialised or torn down. Tested by platform/zu/tests/log-test.cpp.
#pragma once

#include <functional>
#include <ios>
#include <memory>
#include <ostream>
#include <string>

#include <zu/export.hpp>

namespace zu::log {

/// From gravest to most talkative. A category set to one level shows it and all graver ones;
/// `silent` hides everything; a record never has it.
enum class Level : int {
  silent = 0,
  fatal = 1,
  error = 2,
  warning = 3,
  info = 4,
  verbose = 5,
  debug = 6
};

/// A named source of records. Opaque; lives as long as the process.
class Category;

/// The category of that name, created at the first call; the same pointer for the same name.
/// Throws only std::bad_alloc.
ZU_EXPORT Category* addCategory(const std::string& name);

/// Whether the category shows records of `level`, whether or not there is a handler. False for a
/// null category and for Level::silent. Costs one atomic load.
ZU_EXPORT bool isVisible(const Category* category, Level level) noexcept;

/// Sets every category, also those set one by one before and those added later. The level at
/// start is Level::info.
ZU_EXPORT void setLevel(Level level);

/// Sets that category alone, also if it is added later; holds until either function sets it anew.
ZU_EXPORT void setLevel(const std::string& category, Level level);

/// One message, as handlers get it.
struct Record {
  Level level;           ///< Never Level::silent.
  std::string category;  ///< Name of the category.
  std::string file;      ///< Source file, or empty.
  std::string function;  ///< Name of the function, or empty.
  int line;              ///< Line of the source file, or 0.
  std::string text;      ///< The message as it was put together.
};

/// Runs on the thread that logs, which is not cancelled (pthread_cancel) until its record is
/// handed over. What a handler throws is dropped; it must not end the thread (pthread_exit).
using Handler = std::function<void(const Record&)>;

/// From now on `handler` is called once for each visible record, by several threads at once if
/// they log at once. A record logged by the handler itself goes to the console and to the other
/// handlers, not back to it. Returns the id for removeHandler, 1 or more; -1 for an empty function,
/// which is not added.
ZU_EXPORT int addHandler(Handler handler);

/// Once this returns the handler does not run and is never called again: it waits for calls on
/// other threads to end, so do not hold a lock that the handler takes. Called from within a
/// handler it does not wait, and calls that have begun may still run. An unknown id does nothing.
ZU_EXPORT void removeHandler(int id);

/// The sink on standard error, one line for each visible record; on at start.
ZU_EXPORT void setConsole(bool enabled);

/// Collects one message and hands it over as one record when destroyed, which never throws.
///
/// Whether the record is visible is decided at construction; if it is not, nothing that is put in
/// is formatted. Numbers have the default stream format of the classic locale. Used by one thread.
class ZU_EXPORT LogStream {
 public:
  /// `file` and `function` are copied; null is taken as the empty string.
  LogStream(Level level, const char* file, const char* function, int line,
            const Category* category);
  ~LogStream();
  LogStream(const LogStream&) = delete;
  LogStream& operator=(const LogStream&) = delete;

  /// Adds a value as a stream formats it.
  template <typename T>
  LogStream& operator<<(const T& value) {
    if (text_ != nullptr) {
      *text_ << value;
    }
    return *this;
  }

  /// Takes a manipulator such as std::endl, whose type cannot be deduced above.
  LogStream& operator<<(std::ostream& (*manipulator)(std::ostream&)) {
    if (text_ != nullptr) {
      *text_ << manipulator;
    }
    return *this;
  }
  /// Takes a manipulator such as std::hex.
  LogStream& operator<<(std::ios_base& (*manipulator)(std::ios_base&)) {
    if (text_ != nullptr) {
      *text_ << manipulator;
    }
    return *this;
  }

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;    // null when the record is not visible
  std::ostream* text_ = nullptr;  // the stream inside impl_
};

}  // namespace zu::log
