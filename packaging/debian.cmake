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
  "velmora, to try, check and test a dialogue; the trainer of models; their evaluation."
  DEPENDS "${velmora_same_version}" RECOMMENDS velmora-data-enu)
if(TARGET velmora_python)
  # A compiled module serves the one minor version of the interpreter that it was built for.
  get_directory_property(python_minor DIRECTORY ${PROJECT_SOURCE_DIR}/python DEFINITION Python_VERSION_MINOR)
  math(EXPR next_python_minor "${python_minor} + 1")
  velmora_package(python python3-velmora python
    "The matcher as a Python module."
    DEPENDS "${velmora_same_version}, python3 (>= 3.${python_minor}), python3 (<< 3.${next_python_minor}), python3-numpy"
    RECOMMENDS velmora-data-enu)
  set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA
    ${CMAKE_CURRENT_SOURCE_DIR}/python/postinst ${CMAKE_CURRENT_SOURCE_DIR}/python/prerm)
endif()
foreach(language IN LISTS velmora_languages)
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
  install(FILES ${PROJECT_SOURCE_DIR}/data/README.md
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/velmora-data-${language} COMPONENT data-${language})
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/data/LICENSES
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/velmora-data-${language} COMPONENT data-${language})
  # A host that ran as root has left snapshots beside the model.
  set(velmora_model_dir
    ${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}/dialog/velmora/data/${language}/model)
  configure_file(data-prerm.in ${CMAKE_CURRENT_BINARY_DIR}/${language}/prerm @ONLY
    FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
  set(CPACK_DEBIAN_DATA-${upper}_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_BINARY_DIR}/${language}/prerm)
endforeach()
