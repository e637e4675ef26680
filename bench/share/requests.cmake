# Count the requests of the library and of the minimum on a share, and compare them with
# the table.  Parameters: -DPROGRAM, -DTABLE, and -DCOUNTED, a file to which the counts
# are written in the format of the table.

execute_process(
  COMMAND ${PROGRAM} 5 40 0 4096 # the reply size that all kernels support
  RESULT_VARIABLE result
  OUTPUT_VARIABLE text
  ERROR_VARIABLE errors)
if(result EQUAL 77)
  message("${errors}") # CTest skips the test on this message
  return()
elseif(NOT result EQUAL 0)
  message(FATAL_ERROR "The measures failed: ${errors}")
endif()

string(REGEX REPLACE "; [0-9.]+ s\n" "\n" text "${text}")
string(REGEX MATCHALL "[^\n]*/(vek|minimum): [^\n]*" counts "${text}")
file(STRINGS ${TABLE} head REGEX "^#")
list(JOIN head "\n" head)
list(JOIN counts "\n" counts)
file(WRITE ${COUNTED} "${head}\n${counts}\n")

execute_process(COMMAND diff -u ${TABLE} ${COUNTED} RESULT_VARIABLE result)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "The counts differ from those of ${TABLE}")
endif()
