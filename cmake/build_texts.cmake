# Writes the C source OUTPUT with the texts that identify a build of CONFIG:
# what the compilers were told (from COMMANDS, the build's list of compile
# commands), on which system, when, and for which release.  Run with cmake -P.

cmake_minimum_required(VERSION 3.25)

# The options among the words of a command: not the compiler, nor what only says
# which files are read and written, and how their places are told.
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

# The options of the command that makes the object of a source.
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
  message(FATAL_ERROR "${COMMANDS} does not say how ${source} is compiled")
endfunction()

find_options(c_options build_texts.c)
find_options(cxx_options solver/build_identification.cpp)
string(TIMESTAMP date "%Y-%m-%d %H:%M:%S" UTC) # of SOURCE_DATE_EPOCH where it is set
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
const char vek_release_told[] = \"${RELEASE}\";
const char vek_release[] = \"${RELEASE}\";
")
