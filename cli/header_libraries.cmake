# ztcad_header_library(folder header): the target ztcad_headers_<folder> for a library that consists of
# headers in one folder, such as "CLI" of <CLI/CLI.hpp>. No target if it is not found.
#
# Such headers serve every system. When cross-compiling, those of the build system are used, through a folder
# that has nothing else of it.
function(ztcad_header_library folder header)
  set(target ztcad_headers_${folder})
  if(TARGET ${target})
    return()
  endif()
  if(CMAKE_CROSSCOMPILING)
    find_path(ZTCAD_HEADERS_${folder} ${header} PATHS /usr/local/include /usr/include NO_CMAKE_FIND_ROOT_PATH)
  else()
    find_path(ZTCAD_HEADERS_${folder} ${header})
  endif()
  mark_as_advanced(ZTCAD_HEADERS_${folder})
  set(found ${ZTCAD_HEADERS_${folder}})
  if(NOT found)
    return()
  endif()
  if(CMAKE_CROSSCOMPILING)
    set(links ${PROJECT_BINARY_DIR}/headers/${folder})
    file(MAKE_DIRECTORY ${links})
    file(CREATE_LINK ${found}/${folder} ${links}/${folder} SYMBOLIC)
    set(found ${links})
  endif()
  add_library(${target} INTERFACE)
  target_include_directories(${target} SYSTEM INTERFACE ${found})
endfunction()
