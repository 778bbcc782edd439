# The tests of the package: all of tests/ but the batches with their coverage, the batches, and types.

execute_process(COMMAND ${Python3_EXECUTABLE} -c "import pytest, hypothesis, mypy, meshio, pytest_cov"
                RESULT_VARIABLE lacks_modules OUTPUT_QUIET ERROR_QUIET)
if(lacks_modules)
  message(STATUS "pytest, hypothesis, mypy, meshio or pytest-cov not found: the package ztcad is not tested")
  return()
endif()

set(python_tests ${CMAKE_CURRENT_SOURCE_DIR}/tests)
set(python_settings ${CMAKE_CURRENT_SOURCE_DIR}/pyproject.toml)

# ztcad_python_test(name module argument...): runs a module of Python with the package of this build
function(ztcad_python_test name)
  ztcad_command_test(python.${name} ${Python3_EXECUTABLE} -m ${ARGN})
  set(environment PYTHONPATH=${PROJECT_BINARY_DIR}/python PYTHONDONTWRITEBYTECODE=1
                  COVERAGE_FILE=${CMAKE_CURRENT_BINARY_DIR}/coverage)
  if(TARGET ztcad_program)
    list(APPEND environment ZTCAD_PROGRAM=$<TARGET_FILE:ztcad_program>)
  endif()
  # not in the folder of the sources, which Python would prefer and which lacks the extension module
  set_tests_properties(python.${name} PROPERTIES ENVIRONMENT "${environment}"
                       WORKING_DIRECTORY ${PROJECT_BINARY_DIR}/python)
endfunction()

# The interpreter is not instrumented: the sanitizers' runtimes come first in it, and its own memory stays
# allocated at the end. What is freed is overwritten, so that the tests of lifetimes fail if they read it:
# NumPy itself is not instrumented either.
if(ZTCAD_SANITIZE)
  if(ZTCAD_SANITIZE MATCHES address)
    foreach(runtime libasan.so libubsan.so)
      execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${runtime} OUTPUT_VARIABLE path
                      OUTPUT_STRIP_TRAILING_WHITESPACE)
      string(APPEND runtimes "${path} ")
    endforeach()
    ztcad_python_test(lifetimes pytest -q -p no:hypothesispytest ${python_tests}/test_lifetimes.py
                      ${python_tests}/test_containers.py)
    set_property(TEST python.lifetimes APPEND PROPERTY ENVIRONMENT
                 "LD_PRELOAD=${runtimes}" PYTHONMALLOC=malloc
                 ASAN_OPTIONS=detect_leaks=0:max_free_fill_size=1048576)
  endif()
  return()
endif()

ztcad_python_test(pytest pytest -q ${python_tests} --ignore-glob=${python_tests}/test_batch*.py
                  --cov --cov-config=${python_settings} --cov-report=term-missing)
file(GLOB batch_tests CONFIGURE_DEPENDS tests/test_batch*.py)
if(batch_tests)
  ztcad_python_test(batch pytest -q ${batch_tests} --cov=${CMAKE_CURRENT_SOURCE_DIR}/ztcad/batch
                    --cov-config=/dev/null --cov-fail-under=95 --cov-report=term-missing)
endif()
ztcad_python_test(mypy mypy --config-file ${python_settings} --cache-dir ${CMAKE_CURRENT_BINARY_DIR}/mypy
                  --explicit-package-bases ${PROJECT_BINARY_DIR}/python/ztcad ${python_tests})
