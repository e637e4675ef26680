# Count the instructions of the operations in memory, and compare them with the table.
# Parameters: -DPROGRAM, -DVALGRIND, -DTABLE, -DWORK_DIR

set(samples 40) # in the tree
file(REMOVE_RECURSE ${WORK_DIR})
file(MAKE_DIRECTORY ${WORK_DIR})
execute_process(
  COMMAND ${VALGRIND} --tool=callgrind --callgrind-out-file=counts ${PROGRAM}
  WORKING_DIRECTORY ${WORK_DIR}
  RESULT_VARIABLE result
  ERROR_VARIABLE errors)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "The operations failed: ${errors}")
endif()

file(STRINGS ${TABLE} rows REGEX "^[^#]")
file(GLOB dumps ${WORK_DIR}/counts.*)
foreach(dump ${dumps})
  file(READ ${dump} text)
  if(NOT text MATCHES "Client Request: ([^\n]*).*\nsummary: ([0-9]+)")
    continue()
  endif()
  set(name ${CMAKE_MATCH_1})
  math(EXPR count "${CMAKE_MATCH_2} / ${samples}")
  set(expected 0)
  foreach(row ${rows})
    if(row MATCHES "^${name}: +([0-9]+)")
      set(expected ${CMAKE_MATCH_1})
    endif()
  endforeach()
  math(EXPR difference "(${count} - ${expected}) * 10")
  if(difference GREATER expected OR difference LESS -${expected})
    set(result 1)
    set(verdict ", more than a tenth off")
  else()
    set(verdict "")
  endif()
  message(STATUS "${name}: ${count} instructions, ${expected} in the table${verdict}")
  list(APPEND seen ${name})
endforeach()
list(LENGTH rows row_count)
list(LENGTH seen seen_count)
if(NOT row_count EQUAL seen_count OR result)
  message(FATAL_ERROR "The counts differ from those of ${TABLE}")
endif()
