# What every target of this tree shares: language level, warnings, pinned floating-point rules, sanitizers, and the
# shape of the build tree (bin, lib, share), which is that of an installation.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/lib)
# An installed program finds its libraries beside it, so that any prefix works without an environment variable.
set(CMAKE_INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")

# A host that takes this tree as a part of its own chooses for itself.
if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

add_library(velmora_compile_options INTERFACE)
target_compile_options(velmora_compile_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion
  $<$<BOOL:${VELMORA_WERROR}>:-Werror>
  # GCC 12 raises false alarms over joined strings.
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
  # The same files and sentences give the same scores on every machine: no value may depend on contraction or on
  # reordered additions.
  -ffp-contract=off -fno-fast-math
  # Nothing here reads errno after a square root, and without it several roots can be computed at once.
  -fno-math-errno)
if(VELMORA_SANITIZE)
  target_compile_options(velmora_compile_options INTERFACE
    # Of instrumented code GCC 12 takes parts of the standard library for uninitialised.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>
    -fsanitize=${VELMORA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(velmora_compile_options INTERFACE -fsanitize=${VELMORA_SANITIZE})
else()
  # What writes out of bounds, here or in a library, ends the process instead of taking it over: canaries on the stack,
  # checked C functions, large stack frames probed page by page, and function tables that are read-only. Optimised
  # builds only: the checked C functions need it.
  set(optimised $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
  target_compile_options(velmora_compile_options INTERFACE
    $<${optimised}:-fstack-protector-strong -fstack-clash-protection -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2>)
  target_link_options(velmora_compile_options INTERFACE $<${optimised}:-Wl,-z,relro,-z,now>)
endif()

# velmora_publish(<library> <list>)
# Makes a shared library part of the installation, with its versions, its headers and <library>::<library> for hosts.
# The file <list> holds the symbols that it exports; a test compares them.
function(velmora_publish library list)
  add_library(${library}::${library} ALIAS ${library})
  target_compile_features(${library} PUBLIC cxx_std_17)
  set(map ${PROJECT_SOURCE_DIR}/cmake/exports.map)
  target_link_options(${library} PRIVATE LINKER:--version-script=${map})
  set_target_properties(${library} PROPERTIES
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} INSTALL_RPATH "$ORIGIN" LINK_DEPENDS ${map})
  install(TARGETS ${library} EXPORT ${library}-targets
    LIBRARY COMPONENT lib NAMELINK_COMPONENT dev
    FILE_SET HEADERS COMPONENT dev)
  # Instrumentation adds symbols of its own.
  if(VELMORA_BUILD_TESTS AND NOT VELMORA_SANITIZE)
    cmake_path(ABSOLUTE_PATH list)
    add_test(NAME exported-symbols/${library}
      COMMAND ${PROJECT_SOURCE_DIR}/tests/api/exported-symbols $<TARGET_FILE:${library}> ${list})
  endif()
endfunction()

# velmora_test(<folder/name> [PUBLIC_API | PLATFORM] [LABELS label...] [LIBRARIES library...] [LOCKS resource...])
# One test program from <folder/name>.cpp, registered case by case. It links the objects, and so sees hidden code; with
# PUBLIC_API it links the shared library, as a host does, and with PLATFORM only the libraries that are named. Tests
# that name the same resource never run at the same time.
function(velmora_test path)
  cmake_parse_arguments(arg "PUBLIC_API;PLATFORM" "" "LABELS;LIBRARIES;LOCKS" ${ARGN})
  get_filename_component(name ${path} NAME)
  add_executable(${name} ${path}.cpp)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_link_libraries(${name} PRIVATE velmora_compile_options GTest::gtest GTest::gmock GTest::gtest_main
    ${arg_LIBRARIES})
  if(arg_PUBLIC_API)
    target_link_libraries(${name} PRIVATE velmora::velmora)
  elseif(NOT arg_PLATFORM)
    target_link_libraries(${name} PRIVATE velmora_test_objects)
  endif()
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  set(properties "")
  if(arg_LABELS)
    list(APPEND properties LABELS "${arg_LABELS}")
  endif()
  if(threads IN_LIST arg_LABELS)
    add_dependencies(thread-tests ${name})
  endif()
  if(arg_LOCKS)
    list(APPEND properties RESOURCE_LOCK "${arg_LOCKS}")
  endif()
  gtest_discover_tests(${name} TEST_PREFIX "${name}/" DISCOVERY_TIMEOUT 60 PROPERTIES ${properties})
endfunction()
if(VELMORA_BUILD_TESTS)
  include(GoogleTest)
  add_custom_target(thread-tests) # all that the thread sanitizer is to see
endif()
