#include "logged-opening.hpp"

#include "../support/text-file.hpp"

namespace VX::Dialog::detail {

namespace {

void log_failure(const std::string& path, const OpeningFailure& failure) {
  VELMORA_LOG(failure.log, zu::log::Level::error, failure.function) << failure.text << path;
}

}  // namespace

std::optional<std::string> read_or_log(const std::string& path, const OpeningFailure& failure) {
  std::optional<std::string> text = read_text_file(path);
  if (!text) {
    log_failure(path, failure);
  }
  return text;
}

std::ofstream create_or_log(const std::string& path, const OpeningFailure& failure) {
  std::ofstream out(path);
  if (!out) {
    log_failure(path, failure);
  }
  return out;
}

}  // namespace VX::Dialog::detail
