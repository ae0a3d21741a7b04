# How hosts find an installation: the CMake package and the pkg-config file. Tested by tests/install/.
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
