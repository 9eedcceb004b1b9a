# The libraries that liborvid itself links, as targets, from the cache entries YAJL_LIBRARY,
# GMP_LIBRARY and RE2_LIBRARY.
# The build includes this file, and so does an installed package whose liborvid.a leaves the linking to its
# user: an exported target can name these targets wherever the libraries are.
foreach(library yajl gmp re2)
  if(NOT TARGET Orvid::${library})
    string(TOUPPER ${library} variable)
    add_library(Orvid::${library} UNKNOWN IMPORTED GLOBAL)
    set_target_properties(Orvid::${library} PROPERTIES IMPORTED_LOCATION "${${variable}_LIBRARY}")
  endif()
endforeach()
