# The symbols that the shared library exports and imports, and the libraries it needs.

cmake_minimum_required(VERSION 3.25)

function(run output)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
  string(REPLACE "\n" ";" lines "${text}")
  set(${output} "${lines}" PARENT_SCOPE)
endfunction()

# List the dynamic symbols of a library, without address, type and version.
function(symbols output kind library)
  run(lines ${NM} -D ${kind} --format=posix ${library})
  set(names)
  foreach(line IN LISTS lines)
    if(line MATCHES "^([^ @]+)")
      list(APPEND names ${CMAKE_MATCH_1})
    endif()
  endforeach()
  if(NOT names)
    message(FATAL_ERROR "no symbols in ${library}")
  endif()
  set(${output} "${names}" PARENT_SCOPE)
endfunction()

# Report the names of one list that are not in another.
function(expect_none_of text names known)
  list(REMOVE_ITEM names ${known})
  if(names)
    message(SEND_ERROR "${text}: ${names}")
  endif()
endfunction()

file(STRINGS ${EXPORTS} listed REGEX "^[^#]")
symbols(exported --defined-only ${LIBRARY})
expect_none_of("exported, but not in the list" "${exported}" "${listed}")
expect_none_of("in the list, but not exported" "${listed}" "${exported}")

# The only undefined symbols are those of the C library, of the core library, and of the
# compiler's startup files and sanitizers.
set(core
    vc_str_print vc_alert vc_putenv msg_get_gui_threshold msg_set_gui_threshold
    default_current_defaults dbt_get_int dbt_set_int ac_tavik_root ac_lookup_begin ac_lookup_object
    ac_lookup_done ac_lookup_by_name ac_get_string register_new_plugin_paths)
symbols(provided --defined-only ${HOST_LIBRARY})
expect_none_of("not in the stub core library" "${core}" "${provided}")
symbols(c_library --defined-only ${C_LIBRARY})
symbols(imported --undefined-only ${LIBRARY})
list(FILTER imported EXCLUDE REGEX "^(__gmon_start__|_ITM_.*)$")
if(SANITIZED)
  list(FILTER imported EXCLUDE REGEX "^__(asan|ubsan|sanitizer)_")
endif()
expect_none_of("imported" "${imported}" "${core};${c_library}")

# The SONAME: linked hosts look for the library by this name.
run(lines ${READELF} -d ${LIBRARY})
if(NOT "${lines}" MATCHES "SONAME[^;]*\\[libvek\\.so\\.1]")
  message(SEND_ERROR "${LIBRARY} is not libvek.so.1: ${lines}")
endif()

foreach(library ${LIBRARY} ${HOST_LIBRARY})
  run(lines ${READELF} -d ${library})
  if(NOT "${lines}" MATCHES "NEEDED[^;]*libc\\.")
    message(SEND_ERROR "${library}: no list of what it needs")
  endif()
  if("${lines}" MATCHES "NEEDED[^;]*lib(std)?c\\+\\+")
    if(SANITIZED)
      message(STATUS "${library} gets the C++ runtime library from the sanitizers, not tested")
    else()
      message(SEND_ERROR "${library} needs the C++ runtime library")
    endif()
  endif()
endforeach()
