# The flags that every target of this project is compiled with. They stay private to it: a project that
# adds this one as a sub-directory keeps its own. Warnings are errors in the presets only, which set
# CMAKE_COMPILE_WARNING_AS_ERROR: a later compiler may warn of more.
add_library(orvid_build_flags INTERFACE)
target_compile_features(orvid_build_flags INTERFACE cxx_std_17)
target_compile_options(orvid_build_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align -Wformat=2)
if(ORVID_SANITIZE)
  target_compile_options(orvid_build_flags INTERFACE
    -fsanitize=${ORVID_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(orvid_build_flags INTERFACE -fsanitize=${ORVID_SANITIZE})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # With sanitizers g++ 12 takes std::regex's own functions for uninitialised (GCC bug 105562).
    target_compile_options(orvid_build_flags INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()
if(ORVID_COVERAGE)
  target_compile_options(orvid_build_flags INTERFACE --coverage -fprofile-update=atomic)
  target_link_options(orvid_build_flags INTERFACE --coverage)
endif()
if(ORVID_BUILD_FUZZERS)
  # What the library runs through is what guides the fuzzer.
  target_compile_options(orvid_build_flags INTERFACE -fsanitize=fuzzer-no-link)
endif()

set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
