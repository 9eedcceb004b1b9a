# cmake -DFILE=library or program -DKIND=library|program -DREADELF=readelf -P CheckFile.cmake
# Fails unless the file has all that the linker adds for hardening, and calls the checks of the compiler.
execute_process(COMMAND ${READELF} --wide --file-header --program-headers --dynamic --dyn-syms ${FILE}
  OUTPUT_VARIABLE elf COMMAND_ERROR_IS_FATAL ANY)

set(errors "")
# demand(WHAT PATTERN): the pattern stands somewhere in what readelf prints.
function(demand what pattern)
  if(NOT elf MATCHES "${pattern}")
    set(errors "${errors}${what}: nothing matches ${pattern}\n" PARENT_SCOPE)
  endif()
endfunction()

demand("position independent" "Type: +DYN")
demand("relocations read-only" "GNU_RELRO")
demand("bound at start" "FLAGS_1\\)[^\n]* NOW")
demand("stack not executable" "GNU_STACK[^\n]* RW ")
demand("stack protector" "__stack_chk_fail")
demand("fortified calls" "__[a-z]+_chk@")
if(KIND STREQUAL "program")
  demand("PIE" "FLAGS_1\\)[^\n]* PIE")
endif()
if(elf MATCHES "TEXTREL")
  string(APPEND errors "code is relocated: TEXTREL\n")
endif()
if(elf MATCHES "LOAD[^\n]* RWE ")
  string(APPEND errors "memory that is writable and executable: RWE\n")
endif()
if(errors)
  message(FATAL_ERROR "${FILE}\n${errors}${elf}")
endif()
