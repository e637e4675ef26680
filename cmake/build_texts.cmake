# Writes the C source OUTPUT with the texts that identify a build: what the
# compilers were told (from COMMANDS, the build's list of compile commands), on
# which system, when, and for which release.  Run with cmake -P.

cmake_minimum_required(VERSION 3.25)

# The options of the command that compiles a source whose path ends in `tail`,
# without those that only say which file is read or written.
function(find_options variable tail)
  set(found "")
  file(READ ${COMMANDS} commands)
  string(JSON count LENGTH ${commands})
  math(EXPR last "${count} - 1")
  foreach(i RANGE ${last})
    string(JSON source GET ${commands} ${i} file)
    if(source MATCHES "${tail}$")
      string(JSON command GET ${commands} ${i} command)
      separate_arguments(words UNIX_COMMAND ${command})
      list(POP_FRONT words)
      list(JOIN words " " found)
      string(REGEX REPLACE "(^| )(-o|-c|-isystem) [^ ]+|(^| )-I[^ ]+" "" found "${found}")
      string(STRIP "${found}" found)
      break()
    endif()
  endforeach()
  set(${variable} ${found} PARENT_SCOPE)
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
