# The functions that the libraries for Windows export, and the DLLs that they load.

cmake_minimum_required(VERSION 3.25)

# Store in `output` what the pattern captures from each line of objdump.
function(listed output library pattern)
  execute_process(COMMAND ${OBJDUMP} -p ${library} OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "${pattern}" lines "${text}")
  set(found)
  foreach(line IN LISTS lines)
    string(REGEX REPLACE "${pattern}" "\\1" name "${line}")
    list(APPEND found ${name})
  endforeach()
  list(SORT found)
  set(${output} "${found}" PARENT_SCOPE)
endfunction()

file(STRINGS ${EXPORTS} expected REGEX "^[^#]")
list(SORT expected)
listed(exported ${LIBRARY} "\t\\[ *[0-9]+\\] ([A-Za-z_0-9]+)\n")
if(NOT exported STREQUAL expected)
  message(SEND_ERROR "exported are '${exported}', expected '${expected}'")
endif()

# Apart from the system's own libraries.
function(expect_loaded library expected)
  listed(loaded ${library} "DLL Name: ([^\n]+)\n")
  list(REMOVE_ITEM loaded ADVAPI32.dll KERNEL32.dll msvcrt.dll)
  if(NOT loaded STREQUAL expected)
    message(SEND_ERROR "${library} loads '${loaded}', expected '${expected}'")
  endif()
endfunction()
expect_loaded(${LIBRARY} hsk.dll)
expect_loaded(${HOST_LIBRARY} "")
if(NOT EXISTS ${IMPORT_LIBRARY})
  message(SEND_ERROR "${IMPORT_LIBRARY} is missing")
endif()
