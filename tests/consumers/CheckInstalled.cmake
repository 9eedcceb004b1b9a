# cmake -DPREFIX=folder -DLIBDIR=lib -DSOURCE=folder -DVERSION=0.1.0 -P CheckInstalled.cmake
# Fails unless everything is installed that a user looks for, each header of the project among it, and the
# version file answers as it should.
set(wanted
  ${LIBDIR}/cmake/Orvid/OrvidConfig.cmake ${LIBDIR}/cmake/Orvid/OrvidTargets.cmake
  ${LIBDIR}/cmake/Orvid/OrvidConfigVersion.cmake ${LIBDIR}/pkgconfig/orvid.pc)
foreach(folder base/include include)
  file(GLOB_RECURSE headers RELATIVE ${SOURCE}/${folder} ${SOURCE}/${folder}/*.h)
  list(TRANSFORM headers PREPEND include/)
  list(APPEND wanted ${headers})
endforeach()
file(GLOB pages RELATIVE ${SOURCE}/docs ${SOURCE}/docs/*.1)
list(TRANSFORM pages PREPEND share/man/man1/)
list(APPEND wanted ${pages})
foreach(file ${wanted})
  if(NOT EXISTS ${PREFIX}/${file})
    message(SEND_ERROR "${file} is not installed in ${PREFIX}")
  endif()
endforeach()

# is_compatible(ASKED ANSWER): what find_package() would answer.
function(is_compatible asked answer)
  set(PACKAGE_FIND_VERSION ${asked})
  string(REGEX MATCH "^([0-9]+)\\.([0-9]+)" unused ${asked})
  set(PACKAGE_FIND_VERSION_MAJOR ${CMAKE_MATCH_1})
  set(PACKAGE_FIND_VERSION_MINOR ${CMAKE_MATCH_2})
  set(CMAKE_SIZEOF_VOID_P "")
  include(${PREFIX}/${LIBDIR}/cmake/Orvid/OrvidConfigVersion.cmake)
  if((PACKAGE_VERSION_COMPATIBLE AND NOT answer) OR (answer AND NOT PACKAGE_VERSION_COMPATIBLE))
    message(SEND_ERROR "version ${PACKAGE_VERSION} answers '${PACKAGE_VERSION_COMPATIBLE}' to ${asked}")
  endif()
endfunction()

is_compatible(${VERSION} TRUE)
string(REGEX MATCH "^([0-9]+)\\.([0-9]+)" short ${VERSION})
math(EXPR next "${CMAKE_MATCH_2} + 1")
math(EXPR other "${CMAKE_MATCH_1} + 1")
is_compatible(${short} TRUE)
is_compatible(${CMAKE_MATCH_1}.${next} FALSE)
is_compatible(${other}.0 FALSE)
