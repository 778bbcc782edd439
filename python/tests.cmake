# The tests of the package in two runs that go in parallel, the coverage of both together, and the types.

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
                  COVERAGE_FILE=${CMAKE_CURRENT_BINARY_DIR}/coverage.${name})
  if(TARGET ztcad_program)
    list(APPEND environment ZTCAD_PROGRAM=$<TARGET_FILE:ztcad_program>)
  endif()
  if(ZTCAD_VIEWER_PAGE AND TARGET meshoptimizer::meshoptimizer)
    list(APPEND environment ZTCAD_TEST_HAS_VIEWER_PAGE=1)
  endif()
  # not in the folder of the sources, which Python would prefer and which lacks the extension module
  set_tests_properties(python.${name} PROPERTIES ENVIRONMENT "${environment}"
                       WORKING_DIRECTORY ${PROJECT_BINARY_DIR}/python)
endfunction()

# The interpreter and NumPy are not instrumented. The sanitizers' runtimes are therefore loaded first, leaks
# are not reported (the interpreter keeps memory until it ends), and freed memory is overwritten: a read of it
# by NumPy goes unnoticed, but gives wrong numbers.
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

# Each run writes its data; the limit of pyproject.toml applies to both together.
set(python_coverage --cov --cov-config=${python_settings} --cov-report= --cov-fail-under=0)
file(GLOB batch_tests CONFIGURE_DEPENDS tests/test_batch*.py)
ztcad_python_test(pytest pytest -q ${python_tests} --ignore-glob=${python_tests}/test_batch*.py
                  ${python_coverage})
ztcad_python_test(batch pytest -q ${batch_tests} ${python_coverage})
ztcad_command_test(python.coverage sh -c "\
  '${Python3_EXECUTABLE}' -m coverage combine --keep -q coverage.pytest coverage.batch && \
  '${Python3_EXECUTABLE}' -m coverage report")
set_tests_properties(python.coverage PROPERTIES FIXTURES_REQUIRED python_coverage
                     ENVIRONMENT "COVERAGE_RCFILE=${python_settings};COVERAGE_FILE=coverage.all"
                     WORKING_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR})
set_tests_properties(python.pytest python.batch PROPERTIES FIXTURES_SETUP python_coverage)
ztcad_python_test(mypy mypy --config-file ${python_settings} --cache-dir ${CMAKE_CURRENT_BINARY_DIR}/mypy
                  --explicit-package-bases ${PROJECT_BINARY_DIR}/python/ztcad ${python_tests})
