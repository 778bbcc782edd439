# Functions that declare tests.

include(GoogleTest)

# Seconds after which a test counts as hanging. Generous: a loaded machine is no failure.
set(test_timeout 600)
if(ZTCAD_SANITIZE OR ZTCAD_COVERAGE OR CMAKE_CROSSCOMPILING_EMULATOR)
  math(EXPR test_timeout "3 * ${test_timeout}")
endif()

# ztcad_command_test(name command...): a test that is no GoogleTest program
function(ztcad_command_test name)
  add_test(NAME ${name} COMMAND ${ARGN})
  set_tests_properties(${name} PROPERTIES TIMEOUT ${test_timeout})
  set_property(GLOBAL APPEND PROPERTY ZTCAD_COMMAND_TESTS ${name})
endfunction()

# ztcad_test(name [ONE_BY_ONE] [OPTIMISED] LINKS targets... FILES ...): one GoogleTest program. ctest runs its
# suites one by one; with ONE_BY_ONE, each test in a process of its own. Under an emulator, which starts
# slowly, the other programs run all their tests in one process.
#
# Test sources are compiled without optimisation, which takes half the time, under the sanitizers a sixth. The
# library that they call keeps the optimisation of its preset. OPTIMISED is for programs that compute much
# themselves.
function(ztcad_test name)
  cmake_parse_arguments(test "ONE_BY_ONE;OPTIMISED" "" "FILES;LINKS" ${ARGN})
  add_executable(${name} ${test_FILES})
  target_link_libraries(${name} PRIVATE ${test_LINKS} ztCAD_options GTest::gtest_main)
  target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  target_sources(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests/leak_suppressions.cpp)
  target_compile_definitions(${name} PRIVATE
    ZTCAD_TEST_LEAK_SUPPRESSIONS="${PROJECT_SOURCE_DIR}/tests/leak_suppressions.txt"
    ZTCAD_TEST_QT5_ANSWERS="${PROJECT_SOURCE_DIR}/tests/qt5_answers")
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  if(NOT test_OPTIMISED AND NOT MSVC)
    target_compile_options(${name} PRIVATE -O0)
    if(MINGW)
      # unoptimised templates leave more sections than the default object format can number
      target_compile_options(${name} PRIVATE -Wa,-mbig-obj)
    endif()
  endif()
  if(test_ONE_BY_ONE)
    gtest_discover_tests(${name} TEST_PREFIX ${name}. DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 120
                         PROPERTIES TIMEOUT ${test_timeout})
  elseif(CMAKE_CROSSCOMPILING_EMULATOR)
    ztcad_command_test(${name} ${name})
  else()
    # a filter that selects nothing is a fault of the list of suites, not a success
    set(properties TIMEOUT ${test_timeout} FAIL_REGULAR_EXPRESSION "Running 0 tests")
    list(JOIN properties "]==] [==[" properties)
    file(GENERATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/${name}_include.cmake CONTENT
"set(name [==[${name}]==])
set(program [==[$<TARGET_FILE:${name}>]==])
set(list [==[${CMAKE_CURRENT_BINARY_DIR}/${name}_suites.cmake]==])
set(properties \"[==[${properties}]==]\")
include([==[${PROJECT_SOURCE_DIR}/cmake/test_suites.cmake]==])
")
    set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES
                 ${CMAKE_CURRENT_BINARY_DIR}/${name}_include.cmake)
  endif()
endfunction()

# ztcad_require_timeouts(folder...): no test of these folders may run for ever. Those that ctest itself lists,
# which are not known here, get their timeout in ztcad_test.
function(ztcad_require_timeouts)
  get_property(command_tests GLOBAL PROPERTY ZTCAD_COMMAND_TESTS)
  foreach(folder IN LISTS ARGN)
    get_property(tests DIRECTORY ${folder} PROPERTY TESTS)
    foreach(test IN LISTS tests)
      if(NOT test IN_LIST command_tests)
        message(FATAL_ERROR "the test ${test} has no timeout: declare it with ztcad_command_test")
      endif()
    endforeach()
  endforeach()
endfunction()
