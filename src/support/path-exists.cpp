#include "path-exists.hpp"

#include <boost/filesystem.hpp>

namespace VX::Dialog::detail {

bool path_exists(const std::string& path) {
  const boost::filesystem::file_type type = boost::filesystem::status(path).type();
  return type != boost::filesystem::status_error && type != boost::filesystem::file_not_found;
}

}  // namespace VX::Dialog::detail
