# The command with the library and what that needs inside, except for the C library: most of a start was the dynamic
# linker's, which looks up the names of the C++ library for each library that uses them.
# ORVID_TOOL_IS_STATIC says whether it is to be linked so. For optimised builds; the others, which are linked
# far more often than they are started, and the sanitizers take the shared libraries.
include(CheckCXXSourceCompiles)

option(ORVID_STATIC_TOOL "Link the command with the library and what that needs inside, where there are archives" ON)

find_library(YAJL_ARCHIVE NAMES libyajl_s.a)
find_library(GMP_ARCHIVE NAMES libgmp.a)
find_library(RE2_ARCHIVE NAMES libre2.a)
mark_as_advanced(YAJL_ARCHIVE GMP_ARCHIVE RE2_ARCHIVE)
set(orvid_tool_archives ${YAJL_ARCHIVE} ${GMP_ARCHIVE} ${RE2_ARCHIVE})
set(orvid_tool_static_link -static-libstdc++ -static-libgcc -Wl,--gc-sections)

# Whether a program can be made of the archives, which may be of another architecture or lack a library of their own.
function(orvid_check_archives)
  set(CMAKE_REQUIRED_INCLUDES ${YAJL_INCLUDE_DIR} ${GMP_INCLUDE_DIR} ${RE2_INCLUDE_DIR})
  set(CMAKE_REQUIRED_LIBRARIES ${orvid_tool_archives} Threads::Threads)
  set(CMAKE_REQUIRED_LINK_OPTIONS ${orvid_tool_static_link})
  check_cxx_source_compiles("
    #include <gmp.h>
    #include <re2/re2.h>
    #include <yajl/yajl_parse.h>
    int main() {
        mpz_t number;
        mpz_init(number);
        yajl_free(yajl_alloc(nullptr, nullptr, nullptr));
        return RE2(\"a\").ok() ? 0 : 1;
    }" ORVID_ARCHIVES_LINK)
endfunction()

set(ORVID_TOOL_IS_STATIC OFF)
if(ORVID_STATIC_TOOL AND YAJL_ARCHIVE AND GMP_ARCHIVE AND RE2_ARCHIVE AND NOT ORVID_SANITIZE
    AND NOT ORVID_COVERAGE AND CMAKE_BUILD_TYPE MATCHES "^(Release|RelWithDebInfo|MinSizeRel)$")
  orvid_check_archives()
  set(ORVID_TOOL_IS_STATIC ${ORVID_ARCHIVES_LINK})
endif()
