// Where the model of a language lies; see model-place.hpp.
#include "model-place.hpp"

#include <filesystem>
#include <iostream>

#include <zu/path.hpp>

namespace {

namespace fs = std::filesystem;

bool is_there(const std::string& path) {
  std::error_code ignored;
  return fs::exists(path, ignored);
}

/// The folder that holds the folders of the languages, cut from the installed place of one.
std::string installed_base(const std::string& language) {
  std::string path = zu::path::findData("dialog", "velmora/data/" + language + "/");
  while (!path.empty() && path.back() == '/') {
    path.pop_back();
  }
  return fs::path(path).parent_path().string();
}

}  // namespace

bool find_model(const std::string& base, const std::string& language, ModelPlace& place) {
  place.base = base;
  if (base.empty() || !is_there(base + "/" + language)) {
    place.base = installed_base(language);
    if (!is_there(place.base + "/" + language)) {
      std::cerr << "no model for language '" << language << "': looked in ";
      if (!base.empty()) {
        std::cerr << base << "/" << language << " and ";
      }
      std::cerr << place.base << "/" << language << "\n";
      return false;
    }
    if (!base.empty()) {
      std::cerr << "note: " << base << "/" << language
                << " is not there, using the installed model " << place.base << "/" << language
                << "\n";
    }
  }
  place.directory = place.base + "/" + language + "/model/";
  for (const char* file : {"dictionary", "idf", "model", "model.conf"}) {
    if (!is_there(place.directory + file)) {
      std::cerr << "the model is not complete: " << place.directory << file << " is missing\n";
      return false;
    }
  }
  return true;
}
