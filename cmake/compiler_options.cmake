# Options that hold for every target of the project, and nothing for whoever uses the installed library.

add_library(ztCAD_options INTERFACE)

if(ZTCAD_STRICT_WARNINGS)
  if(MSVC)
    # not: members of the standard library's and of Qt's types in exported classes, which every such class has
    target_compile_options(ztCAD_options INTERFACE /W4 /wd4251 /wd4275)
  else()
    target_compile_options(ztCAD_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion
                           -Wno-sign-conversion
                           "$<$<COMPILE_LANGUAGE:CXX>:-Wold-style-cast;-Wnon-virtual-dtor;-Woverloaded-virtual>")
  endif()
endif()

if(MSVC)
  target_compile_options(ztCAD_options INTERFACE /utf-8
                         "$<$<COMPILE_LANGUAGE:CXX>:/permissive-;/Zc:__cplusplus;/EHsc>")
endif()

if(WIN32)
  # of the system's header the plain functions, without macros named min and max
  target_compile_definitions(ztCAD_options INTERFACE WIN32_LEAN_AND_MEAN NOMINMAX)
endif()

if(ZTCAD_SANITIZE)
  set(sanitizers -fsanitize=${ZTCAD_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_compile_options(ztCAD_options INTERFACE ${sanitizers})
  target_link_options(ztCAD_options INTERFACE ${sanitizers})
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    # instrumented code leads GCC 12 to false alarms in headers of the standard library
    target_compile_options(ztCAD_options INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()

if(ZTCAD_COVERAGE)
  target_compile_options(ztCAD_options INTERFACE --coverage)
  target_link_options(ztCAD_options INTERFACE --coverage)
endif()
