# Writes a C++ source file that holds other files byte for byte.
# cmake -DOUTPUT=page-files.cpp "-DFILES=index.html;app.js" -DFOLDER=page -P embed-files.cmake
set(type_of_html "text/html; charset=utf-8")
set(type_of_css "text/css; charset=utf-8")
set(type_of_js "text/javascript; charset=utf-8")
set(type_of_svg "image/svg+xml")
set(type_of_yaml "application/yaml; charset=utf-8")

set(arrays "")
set(entries "")
set(number 0)
foreach(file IN LISTS FILES)
  file(READ ${FOLDER}/${file} bytes HEX)
  string(REGEX REPLACE "(..)" "'\\\\x\\1'," bytes "${bytes}")
  string(APPEND arrays "constexpr char kFile${number}[] = {${bytes}};\n")
  get_filename_component(ending ${file} LAST_EXT)
  string(SUBSTRING ${ending} 1 -1 ending)
  set(path /${file})
  if(file STREQUAL index.html)
    set(path /)
  endif()
  string(APPEND entries
    "    PageFile{\"${path}\", \"${type_of_${ending}}\", std::string_view(kFile${number}, sizeof kFile${number})},\n")
  math(EXPR number "${number} + 1")
endforeach()
file(WRITE ${OUTPUT} "// Made by embed-files.cmake.
#include \"page-files.hpp\"

#include <array>

namespace serve {

namespace {

${arrays}
constexpr std::array kFiles = {
${entries}};

}  // namespace

const PageFile* find_page_file(std::string_view path) {
  for (const PageFile& file : kFiles) {
    if (file.path == path) {
      return &file;
    }
  }
  return nullptr;
}

}  // namespace serve
")
