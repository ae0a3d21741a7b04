// Where the data files of an application are. Tested by platform/zu/tests/path-test.cpp.
#pragma once

#include <string>

#include <zu/export.hpp>

namespace zu::path {

/// The path of `file`, a relative path, among the data of `application`.
///
/// Looks for `<root>/<application>/<file>` under these roots, in the manner of the XDG base
/// directory rules, and takes the first that exists (file or folder alike):
///   1. $XDG_DATA_HOME, by default $HOME/.local/share; left out with `excludeUserData`
///   2. `share` of the prefix that this library was loaded from (its lib, lib64 or lib/<arch>)
///   3. the entries of $XDG_DATA_DIRS, by default /usr/local/share and /usr/share
/// A relative path in a variable is ignored. What may not be read counts as missing. A trailing
/// slash of `file` is ignored by the search and kept in the result. When nothing exists the result
/// is the path under root 2, where there is nothing then.
///
/// Throws only std::bad_alloc. Calls may overlap as long as no thread changes the environment.
ZU_EXPORT std::string findData(const std::string& application, const std::string& file,
                               bool excludeUserData = false);

}  // namespace zu::path
