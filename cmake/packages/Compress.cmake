# Run by cpack between laying out the files and packing them: compresses manual pages and change logs, as
# Debian wants them.
file(GLOB_RECURSE files LIST_DIRECTORIES false ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*)
list(FILTER files INCLUDE REGEX "/share/(man/man[1-9]/[^/]*[1-9]|doc/[^/]*/changelog)$")
foreach(file ${files})
  execute_process(COMMAND gzip -9nf ${file} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
