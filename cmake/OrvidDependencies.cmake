# The libraries that the library itself links; docs/dependencies.md says what each is for.
# libyajl-dev, libgmp-dev and libre2-dev carry pkg-config files, but not in every version, so the plain search is used.
find_path(YAJL_INCLUDE_DIR yajl/yajl_parse.h REQUIRED)
find_library(YAJL_LIBRARY yajl REQUIRED)
find_path(GMP_INCLUDE_DIR gmp.h REQUIRED)
find_library(GMP_LIBRARY gmp REQUIRED)
find_path(RE2_INCLUDE_DIR re2/re2.h REQUIRED)
find_library(RE2_LIBRARY re2 REQUIRED)
find_path(UTFCPP_INCLUDE_DIR utf8.h PATH_SUFFIXES utf8cpp REQUIRED)
include(OrvidLinkLibraries)
