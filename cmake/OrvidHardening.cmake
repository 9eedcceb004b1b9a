# What makes an error in the library or in the command harder to use, and their files the same whatever
# folder they are built in. Optimised builds only: a debugger wants the real folders, and the checks of
# _FORTIFY_SOURCE need the optimiser; sanitizers see more without it. The flags are given to each target, so
# that a project which adds this one as a sub-directory and links liborvid.a keeps its own.
include(CheckCXXCompilerFlag)
include(CheckPIESupported)

option(ORVID_HARDENING "Harden optimised builds of the library and the command" ON)

set(orvid_hardening_compile -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3 -fstack-protector-strong)
# The two that not every processor has.
check_cxx_compiler_flag(-fstack-clash-protection ORVID_HAS_STACK_CLASH_PROTECTION)
if(ORVID_HAS_STACK_CLASH_PROTECTION)
  list(APPEND orvid_hardening_compile -fstack-clash-protection)
endif()
check_cxx_compiler_flag(-fcf-protection ORVID_HAS_CF_PROTECTION)
if(ORVID_HAS_CF_PROTECTION)
  list(APPEND orvid_hardening_compile -fcf-protection)
endif()
set(orvid_hardening_link -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
check_pie_supported(LANGUAGES CXX)

# orvid_harden(TARGET...): hardens what is built of this project.
function(orvid_harden)
  set(optimised "$<CONFIG:Release,RelWithDebInfo,MinSizeRel>")
  foreach(target ${ARGN})
    target_compile_options(${target} PRIVATE
      "$<${optimised}:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.;-ffile-prefix-map=${PROJECT_BINARY_DIR}=./build>")
    if(ORVID_HARDENING AND NOT ORVID_SANITIZE AND NOT ORVID_BUILD_FUZZERS)
      target_compile_options(${target} PRIVATE "$<${optimised}:${orvid_hardening_compile}>")
      target_link_options(${target} PRIVATE "$<${optimised}:${orvid_hardening_link}>")
    endif()
  endforeach()
endfunction()
