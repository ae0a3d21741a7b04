// A host that loads the libraries at run time gets rid of them again.
#include <dlfcn.h>

#include <gtest/gtest.h>

TEST(Unloading, LeavesNoLibraryBehind) {
  void* library = dlopen(VELMORA_LIBRARY, RTLD_NOW);
  ASSERT_NE(library, nullptr) << dlerror();
  // Logging is in use: its sinks and categories are there.
  auto* set_console = reinterpret_cast<void (*)(bool)>(dlsym(library, "_ZN2zu3log10setConsoleEb"));
  ASSERT_NE(set_console, nullptr) << dlerror();
  set_console(false);

  EXPECT_EQ(dlclose(library), 0);
  for (const char* path : {VELMORA_LIBRARY, FENNEL_LIBRARY, ZU_LIBRARY}) {
    EXPECT_EQ(dlopen(path, RTLD_NOW | RTLD_NOLOAD), nullptr) << path << " is still loaded";
  }
}
