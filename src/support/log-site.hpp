// The one form of a log site, and the categories that this library logs under.
//
// A site checks the level before it builds the message. Records carry no file name and line 0; the
// function name is a literal. Used by every room. Not installed. Tested by
// tests/engine/warm-start-test.cpp and all other tests that compare log lines.
#pragma once

#include <zu/log.hpp>

#define VELMORA_LOG(category, level, function)    \
  if (!zu::log::isVisible((category), (level))) { \
  } else                                          \
    zu::log::LogStream((level), "", (function), 0, (category))

namespace VX::Dialog::detail {

extern zu::log::Category* const corpus_log;
extern zu::log::Category* const model_log;
extern zu::log::Category* const index_word_log;
extern zu::log::Category* const tfidf_log;
extern zu::log::Category* const data_format_log;
extern zu::log::Category* const query_log;
extern zu::log::Category* const command_log;
extern zu::log::Category* const app_command_log;
extern zu::log::Category* const app_data_log;

}  // namespace VX::Dialog::detail
