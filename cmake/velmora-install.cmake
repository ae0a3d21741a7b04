# What an installation holds beside the targets' own install rules: the CMake package, the pkg-config file, manual
# pages and shell completion, and the Debian packages made of it all (scripts/package). Components: lib, dev, tools,
# and data-<language>. Tested by tests/install/.
include(CMakePackageConfigHelpers)

set(velmora_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/velmora)
configure_package_config_file(cmake/velmora-config.cmake.in velmora-config.cmake
  INSTALL_DESTINATION ${velmora_cmake_dir})
write_basic_package_version_file(velmora-config-version.cmake COMPATIBILITY SameMajorVersion)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/velmora-config.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/velmora-config-version.cmake
  DESTINATION ${velmora_cmake_dir} COMPONENT dev)
# The platform libraries keep namespaces of their own: a host says zu::zu, in this tree and outside.
foreach(library IN ITEMS velmora zu fennel)
  install(EXPORT ${library}-targets NAMESPACE ${library}:: DESTINATION ${velmora_cmake_dir} COMPONENT dev)
endforeach()

# The prefix as seen from the folder of the .pc file, so that an installation can be moved.
set(velmora_pc_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH velmora_pc_prefix /prefix/${velmora_pc_dir} /prefix)
string(REGEX REPLACE "/$" "" velmora_pc_prefix ${velmora_pc_prefix})
configure_file(cmake/velmora.pc.in velmora.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/velmora.pc DESTINATION ${velmora_pc_dir} COMPONENT dev)

# Manual pages come from --help, and so are made on the building machine, when help2man is there. Completion asks
# --help at the moment of typing.
find_program(HELP2MAN help2man)
set(velmora_console_summary "match sentences against the rules of a dialogue")
set(velmora_evaluate_summary "measure how well a model matches")
set(velmora_train_summary "train a model on text")
foreach(program IN ITEMS console evaluate train)
  if(NOT TARGET velmora-${program})
    continue()
  endif()
  install(FILES cmake/completion.bash
    DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
    RENAME velmora-${program} COMPONENT tools)
  if(HELP2MAN AND NOT VELMORA_SANITIZE)
    set(page ${CMAKE_BINARY_DIR}/man/velmora-${program}.1)
    add_custom_command(OUTPUT ${page}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/man
      COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C.UTF-8
        ${HELP2MAN} --no-info --section=1 --name=${velmora_${program}_summary} --output=${page}
        $<TARGET_FILE:velmora-${program}>
      DEPENDS velmora-${program} VERBATIM)
    list(APPEND velmora_manual_pages ${page})
  endif()
endforeach()
if(velmora_manual_pages)
  add_custom_target(velmora_manual ALL DEPENDS ${velmora_manual_pages})
  install(FILES ${velmora_manual_pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tools)
endif()

if(NOT PROJECT_IS_TOP_LEVEL)
  return()
endif()

# The Debian packages: one for each component.
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "libvelmora developers <libvelmora@localhost>" CACHE STRING
  "Maintainer of the packages")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# velmora_package(<component> <package> <section> <description> [DEPENDS ...] [RECOMMENDS ...])
function(velmora_package component package section description)
  cmake_parse_arguments(arg "" "DEPENDS;RECOMMENDS" "" ${ARGN})
  string(TOUPPER ${component} upper)
  set(prefix CPACK_DEBIAN_${upper}_PACKAGE)
  set(${prefix}_NAME ${package} PARENT_SCOPE)
  set(${prefix}_SECTION ${section} PARENT_SCOPE)
  set(CPACK_COMPONENT_${upper}_DESCRIPTION "${description}" PARENT_SCOPE)
  set(${prefix}_DEPENDS "${arg_DEPENDS}" PARENT_SCOPE)
  set(${prefix}_RECOMMENDS "${arg_RECOMMENDS}" PARENT_SCOPE)
  install(FILES ${PROJECT_SOURCE_DIR}/LICENSE
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} RENAME copyright COMPONENT ${component})
  set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} ${component} PARENT_SCOPE)
endfunction()

set(velmora_same_version "libvelmora${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION})")
velmora_package(lib libvelmora${PROJECT_VERSION_MAJOR} libs
  "The libraries that a host links: the matcher, and with it logging and stemming."
  RECOMMENDS velmora-data-enu)
set(CPACK_DEBIAN_LIB_PACKAGE_GENERATE_SHLIBS ON)
velmora_package(dev libvelmora-dev libdevel
  "Headers, the CMake package and the pkg-config file of libvelmora."
  DEPENDS "${velmora_same_version}, libeigen3-dev (>= 3.4)")
velmora_package(tools velmora-tools text
  "A console to try a dialogue, the trainer of models, and their evaluation."
  DEPENDS "${velmora_same_version}" RECOMMENDS velmora-data-enu)
foreach(language IN ITEMS enu frf jpj)
  if(NOT EXISTS ${PROJECT_SOURCE_DIR}/data/${language}/model/model)
    continue()
  endif()
  set(needs "")
  if(language STREQUAL jpj)
    set(needs mecab-ipadic-utf8)
  endif()
  velmora_package(data-${language} velmora-data-${language} text
    "The starter model of the language ${language}."
    DEPENDS "${needs}")
  string(TOUPPER ${language} upper)
  set(CPACK_DEBIAN_DATA-${upper}_PACKAGE_ARCHITECTURE all)
  # The texts that the models are made of have licences of their own.
  foreach(notice IN ITEMS README.md LICENSES)
    if(IS_DIRECTORY ${PROJECT_SOURCE_DIR}/data/${notice})
      install(DIRECTORY data/${notice}
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/velmora-data-${language} COMPONENT data-${language})
    elseif(EXISTS ${PROJECT_SOURCE_DIR}/data/${notice})
      install(FILES data/${notice}
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/velmora-data-${language} COMPONENT data-${language})
    endif()
  endforeach()
  # A host that ran as root has left snapshots beside the model.
  set(velmora_model_dir
    ${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/dialog/velmora/data/${language}/model)
  configure_file(cmake/data-prerm.in ${CMAKE_BINARY_DIR}/packaging/${language}/prerm @ONLY
    FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
  set(CPACK_DEBIAN_DATA-${upper}_PACKAGE_CONTROL_EXTRA ${CMAKE_BINARY_DIR}/packaging/${language}/prerm)
endforeach()
include(CPack)
