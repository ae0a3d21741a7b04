// The search for data files: which root wins, and what counts as there.
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include <zu/path.hpp>

namespace zu::path {
namespace {

namespace fs = std::filesystem;

// An empty folder for each test, with the user's and two system roots in it.
class FindData : public ::testing::Test {
 protected:
  FindData() {
    fs::create_directories(root);
    set("XDG_DATA_HOME", root / "home");
    set("XDG_DATA_DIRS", (root / "first/").string() + ":relative:" + (root / "second").string());
  }
  ~FindData() override {
    fs::remove_all(root);
    fs::remove_all(installed);
  }

  static void set(const char* name, const std::string& value) { setenv(name, value.c_str(), 1); }
  std::string put(const fs::path& file) const {
    fs::create_directories((root / file).parent_path());
    std::ofstream(root / file) << "x";
    return root / file;
  }
  std::string find(bool exclude_user_data = false) const {
    return findData(application, "en/idf", exclude_user_data);
  }

  // Not the name of an application that has data here, nor that of a test that runs beside.
  const std::string application = "zu-path-test-" + std::to_string(getpid());
  const fs::path root = fs::temp_directory_path() / application;
  // Beside the library that is tested, in the build tree.
  const fs::path installed = findData(application, "", /*excludeUserData=*/true);
};

TEST_F(FindData, TakesTheFirstRootThatHasIt) {
  const std::string missing = find();
  EXPECT_FALSE(fs::exists(missing));
  EXPECT_TRUE(missing.ends_with("/share/" + application + "/en/idf")) << missing;
  // The prefix of the library comes after the user's data and before the system's.
  for (const std::string& place :
       {std::string("second/"), std::string("first/"), missing, std::string("home/")}) {
    const std::string file = put(place == missing ? place : place + application + "/en/idf");
    EXPECT_EQ(find(), file);
  }
  EXPECT_EQ(find(/*exclude_user_data=*/true), missing);
}

TEST_F(FindData, KeepsATrailingSlashAndTakesAPlainFile) {
  EXPECT_TRUE(findData(application, "en/").ends_with("/share/" + application + "/en/"));
  const std::string folder = fs::path(put("second/" + application + "/en/idf")).parent_path();
  EXPECT_EQ(findData(application, "en/"), folder + "/");
  EXPECT_EQ(findData(application, "en"), folder);
  const std::string file = put("second/" + application + "/fr");
  EXPECT_EQ(findData(application, "fr/"), file + "/");
}

}  // namespace
}  // namespace zu::path
