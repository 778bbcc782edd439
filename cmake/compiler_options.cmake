# Options of all targets of the project; users of the installed library get none of them.

add_library(ztCAD_options INTERFACE)

if(ZTCAD_STRICT_WARNINGS)
  if(MSVC)
    # off: exported classes with members of the standard library's or Qt's types, which all of ours have
    target_compile_options(ztCAD_options INTERFACE /W4 /wd4251 /wd4275)
  else()
    target_compile_options(ztCAD_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                           -Wno-sign-conversion
                           $<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast>
                           $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor>
                           $<$<COMPILE_LANGUAGE:CXX>:-Woverloaded-virtual>)
  endif()
endif()

if(MSVC)
  target_compile_options(ztCAD_options INTERFACE /utf-8
                         "$<$<COMPILE_LANGUAGE:CXX>:/permissive-;/Zc:__cplusplus;/EHsc>")
endif()

if(WIN32)
  # no macros min and max from the system's header
  target_compile_definitions(ztCAD_options INTERFACE WIN32_LEAN_AND_MEAN NOMINMAX)
endif()

if(ZTCAD_SANITIZE)
  set(sanitizers -fsanitize=${ZTCAD_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_options(ztCAD_options INTERFACE ${sanitizers})
  target_link_options(ztCAD_options INTERFACE ${sanitizers})
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    # GCC 12 warns falsely about instrumented headers of the standard library
    target_compile_options(ztCAD_options INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()

if(ZTCAD_COVERAGE)
  target_compile_options(ztCAD_options INTERFACE --coverage)
  target_link_options(ztCAD_options INTERFACE --coverage)
endif()
