# Read by ctest itself: one entry per suite of a GoogleTest program. An entry for each single test would start
# some four thousand processes, which takes longer than the tests.
#
# Expects `name`, `program`, `list` (a file to write), `properties`. A program that is newer than the list is
# asked again.

function(ztcad_list_suites)
  execute_process(COMMAND ${program} --gtest_list_tests OUTPUT_VARIABLE output RESULT_VARIABLE status TIMEOUT
                  120)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${program} does not list its tests: ${status}\n${output}")
  endif()
  # a suite starts its line and ends in a dot; "# TypeParam" may follow
  string(REGEX MATCHALL "\n[^ \n]+\\.[ \n]" suites "\n${output}")
  list(TRANSFORM suites REPLACE "\n(.+)\\.[ \n]" "\\1")
  if(NOT suites)
    message(FATAL_ERROR "${program} lists no tests\n${output}")
  endif()
  set(script "")
  foreach(suite IN LISTS suites)
    string(APPEND script
           "add_test([==[${name}.${suite}]==] [==[${program}]==] [==[--gtest_filter=${suite}.*]==])\n"
                         "set_tests_properties([==[${name}.${suite}]==] PROPERTIES ${properties})\n")
  endforeach()
  file(WRITE "${list}" "${script}")
endfunction()

if(NOT EXISTS "${program}")
  add_test(${name}_NOT_BUILT ${name}_NOT_BUILT)
else()
  if("${program}" IS_NEWER_THAN "${list}" OR "${CMAKE_CURRENT_LIST_FILE}" IS_NEWER_THAN "${list}")
    ztcad_list_suites()
  endif()
  include("${list}")
endif()
