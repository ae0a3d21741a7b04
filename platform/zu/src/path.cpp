#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string_view>
#include <system_error>
#include <vector>

#include <zu/path.hpp>

namespace zu::path {
namespace {

namespace fs = std::filesystem;

bool is_absolute(std::string_view path) {
  return !path.empty() && path.front() == '/';
}

std::string_view without_trailing_slashes(std::string_view path) {
  while (path.size() > 1 && path.back() == '/') {
    path.remove_suffix(1);
  }
  return path;
}

std::string environment(const char* name) {
  const char* value = std::getenv(name);
  return value != nullptr ? value : "";
}

// The folder above lib, lib64 or lib/<arch>; for a library that lies elsewhere the folder above.
fs::path prefix_of(const fs::path& library_folder) {
  const fs::path parent = library_folder.parent_path();
  const bool is_plain = library_folder.filename() == "lib" || library_folder.filename() == "lib64";
  return !is_plain && parent.filename() == "lib" ? parent.parent_path() : parent;
}

// <prefix>/share. Found once, when this library is loaded: the loader's path may be relative to
// the working folder of that moment.
std::string find_installed_root() {
  Dl_info info = {};
  if (dladdr(reinterpret_cast<const void*>(&findData), &info) == 0 || info.dli_fname == nullptr) {
    return "/usr/share";
  }
  std::error_code error;
  const fs::path library = fs::absolute(info.dli_fname, error);
  // The folder is resolved, since /lib may be a link to /usr/lib. The library's own name is not,
  // since a prefix may hold nothing but links to files elsewhere.
  const fs::path folder = fs::canonical(library.parent_path(), error);
  return (prefix_of(error ? library.parent_path() : folder) / "share").string();
}

const std::string& installed_root() {
  static const std::string& root = *new std::string(find_installed_root());
  return root;
}
[[maybe_unused]] const std::string& found_at_load_time = installed_root();

// Empty when the environment names none.
std::string user_root() {
  std::string data_home = environment("XDG_DATA_HOME");
  if (is_absolute(data_home)) {
    return data_home;
  }
  const std::string home = environment("HOME");
  return is_absolute(home) ? home + "/.local/share" : "";
}

std::vector<std::string> search_roots(bool exclude_user_data) {
  std::vector<std::string> roots;
  if (!exclude_user_data) {
    roots.push_back(user_root());
  }
  roots.push_back(installed_root());
  std::string system_roots = environment("XDG_DATA_DIRS");
  if (system_roots.empty()) {
    system_roots = "/usr/local/share:/usr/share";
  }
  std::istringstream entries(system_roots);
  for (std::string entry; std::getline(entries, entry, ':');) {
    roots.push_back(entry);
  }
  std::erase_if(roots, [](const std::string& root) { return !is_absolute(root); });
  return roots;
}

std::string join(std::string_view root, const std::string& application, const std::string& file) {
  return std::string(without_trailing_slashes(root)) + "/" + application + "/" + file;
}

bool exists(std::string_view path) {
  std::error_code error;
  return fs::exists(without_trailing_slashes(path), error);
}

}  // namespace

std::string findData(const std::string& application, const std::string& file,
                     bool excludeUserData) {
  for (const std::string& root : search_roots(excludeUserData)) {
    std::string candidate = join(root, application, file);
    if (exists(candidate)) {
      return candidate;
    }
  }
  return join(installed_root(), application, file);
}

}  // namespace zu::path
