# Writes the C source OUTPUT with the strings that identify a build of CONFIG:
# the compiler options (from COMMANDS, the build's compile_commands.json), the
# SYSTEM, the date and the RELEASE.  Run with cmake -P.

cmake_minimum_required(VERSION 3.25)

# Sets `variable` to the options of a compile command, without the compiler and
# without options that only name files and directories or map their paths.
function(keep_options variable command)
  separate_arguments(words UNIX_COMMAND "${command}")
  list(POP_FRONT words)
  set(kept "")
  set(skips_next OFF)
  foreach(word IN LISTS words)
    if(skips_next)
      set(skips_next OFF)
    elseif(word MATCHES "^(-o|-c|-isystem)$")
      set(skips_next ON)
    elseif(NOT word MATCHES "^(-I|-f[a-z]+-prefix-map=)")
      list(APPEND kept "${word}")
    endif()
  endforeach()
  list(JOIN kept " " kept)
  set(${variable} "${kept}" PARENT_SCOPE)
endfunction()

# Sets `variable` to the options that compile `source`.
function(find_options variable source)
  file(READ ${COMMANDS} commands)
  string(JSON count LENGTH "${commands}")
  foreach(i RANGE 1 ${count})
    math(EXPR i "${i} - 1")
    string(JSON command GET "${commands}" ${i} command)
    if(command MATCHES " -o [^ ]*\\.dir/(${CONFIG}/)?${source}\\.")
      keep_options(options "${command}")
      set(${variable} "${options}" PARENT_SCOPE)
      return()
    endif()
  endforeach()
  message(FATAL_ERROR "${COMMANDS} has no command that compiles ${source}")
endfunction()

find_options(c_options build_texts.c)
find_options(cxx_options solver/build_identification.cpp)
string(TIMESTAMP date "%Y-%m-%d %H:%M:%S" UTC) # that of SOURCE_DATE_EPOCH if it is set
string(REGEX REPLACE "^(....)-(..)-(..) (..):(..):..$" "\\1\\2\\3.\\4\\5" version ${date})

set(texts "")
foreach(text "C       opts: (${c_options})" "C++     opts: (${cxx_options})" "Fortran opts: ()"
             "Utility  lib: vek" "Compile   os: ${SYSTEM}" "Compile date: ${date}"
             "Compile  ver: ${version}" "Release  ver: ${RELEASE}")
  string(REGEX REPLACE "([\"\\])" "\\\\\\1" text "${text}")
  string(APPEND texts "    \"@(#)QNS ${text}\",\n")
endforeach()

file(WRITE ${OUTPUT} "#include \"solver/build_texts.h\"

const char *const vek_build_texts[] = {
${texts}    0};
const char vek_version_release[] = \"${RELEASE}\";
const char vek_release[] = \"${RELEASE}\";
")
