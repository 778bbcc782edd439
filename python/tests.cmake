# The tests of the package, each file a test of ctest: <name> of tests/test_<name>.py is python.<name>.
#
# Every test runs the sources in this folder with the extension module of this build.

execute_process(COMMAND ${Python3_EXECUTABLE} -c "import pytest, hypothesis, mypy, meshio, pytest_cov"
                RESULT_VARIABLE lacks_modules OUTPUT_QUIET ERROR_QUIET)
if(lacks_modules)
  message(STATUS "pytest, hypothesis, mypy, meshio or pytest-cov not found: the package ztcad is not tested")
  return()
endif()

# ztcad_python_test(name command...): runs a command with the package in Python's path
function(ztcad_python_test name)
  ztcad_command_test(python.${name} ${ARGN})
  set(environment PYTHONPATH=${PROJECT_BINARY_DIR}/python PYTHONDONTWRITEBYTECODE=1)
  if(TARGET ztcad_program)
    list(APPEND environment ZTCAD_PROGRAM=$<TARGET_FILE:ztcad_program>)
  endif()
  # not in the folder of the sources, which Python would prefer and which lacks the extension module
  set_tests_properties(python.${name} PROPERTIES ENVIRONMENT "${environment}"
                       WORKING_DIRECTORY ${PROJECT_BINARY_DIR}/python)
endfunction()

file(GLOB test_files CONFIGURE_DEPENDS RELATIVE ${CMAKE_CURRENT_SOURCE_DIR}/tests tests/test_*.py)
foreach(file IN LISTS test_files)
  string(REGEX REPLACE "^test_(.*)\\.py$" "\\1" name ${file})
  ztcad_python_test(${name} ${Python3_EXECUTABLE} -m pytest -q ${CMAKE_CURRENT_SOURCE_DIR}/tests/${file})
endforeach()
