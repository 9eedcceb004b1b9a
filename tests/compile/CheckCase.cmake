# cmake -DCOMPILER=c++ -DCOMPILER_ID=GNU -DFLAGS=... -DSOURCE=folder -DFILE=case.cpp -P CheckCase.cmake
# Compiles the case and holds what the compiler says to the case's first line, which is one of
#   // accepted
#   // refused: REGULAR EXPRESSION      one error, which matches
#   // warned by Clang: REGULAR EXPRESSION
file(STRINGS ${FILE} lines LIMIT_COUNT 1)
list(GET lines 0 expected)
if(expected MATCHES "^// warned by Clang" AND NOT COMPILER_ID MATCHES "Clang")
  message(STATUS "SKIPPED: ${COMPILER_ID} does not warn of this")
  return()
endif()
separate_arguments(flags UNIX_COMMAND "${FLAGS}")
execute_process(
  COMMAND ${COMPILER} ${flags} -std=c++17 -Wall -Wextra -Wpedantic -Wshadow -fsyntax-only
    -I${SOURCE}/include -I${SOURCE}/base/include ${FILE}
  RESULT_VARIABLE result ERROR_VARIABLE said OUTPUT_QUIET)
string(REGEX MATCHALL "error: " errors "${said}")
list(LENGTH errors count)
if(expected STREQUAL "// accepted")
  if(NOT result EQUAL 0 OR said)
    message(FATAL_ERROR "expected no word, but it says\n${said}")
  endif()
elseif(expected MATCHES "^// refused: (.*)$")
  if(result EQUAL 0 OR NOT count EQUAL 1 OR NOT said MATCHES "error: [^\n]*${CMAKE_MATCH_1}")
    message(FATAL_ERROR "expected one error with '${CMAKE_MATCH_1}', but there are ${count}:\n${said}")
  endif()
elseif(expected MATCHES "^// warned by Clang: (.*)$")
  if(NOT result EQUAL 0 OR NOT said MATCHES "warning: [^\n]*${CMAKE_MATCH_1}")
    message(FATAL_ERROR "expected a warning with '${CMAKE_MATCH_1}', but it says\n${said}")
  endif()
else()
  message(FATAL_ERROR "${FILE} does not say what is expected of it")
endif()
