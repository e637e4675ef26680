# Count the requests of the library and of the minimum on a share, and compare them
# with the table.  -DPROGRAM, -DTABLE, -DCOUNTED: where the counts are left in the
# form of the table

execute_process(
  COMMAND ${PROGRAM} 5 40 0 4096 # on all kernels alike
  RESULT_VARIABLE result
  OUTPUT_VARIABLE text
  ERROR_VARIABLE words)
if(result EQUAL 77)
  message("${words}") # by which the test is skipped
  return()
elseif(NOT result EQUAL 0)
  message(FATAL_ERROR "The measures do not run: ${words}")
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
