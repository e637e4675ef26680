# Two builds of the same sources, in two directories and at two times, are identical byte
# for byte when SOURCE_DATE_EPOCH is set.  They are built as packages are, with options
# that remove the directories from the output.

cmake_minimum_required(VERSION 3.25)

set(ENV{SOURCE_DATE_EPOCH} 1000000000)
file(REMOVE_RECURSE ${WORK_DIR})

function(build source build)
  set(map -ffile-prefix-map=${source}=.)
  execute_process(
    COMMAND ${CMAKE_COMMAND} -S ${source} -B ${build} -G ${GENERATOR} -DCMAKE_BUILD_TYPE=Release
            -DCMAKE_C_COMPILER=${C} -DCMAKE_CXX_COMPILER=${CXX} -DCMAKE_C_FLAGS=${map}
            -DCMAKE_CXX_FLAGS=${map}
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND ${CMAKE_COMMAND} --build ${build} --parallel 2
                  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endfunction()

set(copy ${WORK_DIR}/copy)
set(parts CMakeLists.txt cmake docs fortran hsk include src tools)
list(TRANSFORM parts PREPEND ${SOURCE}/)
file(COPY ${parts} DESTINATION ${copy})
build(${SOURCE} ${WORK_DIR}/first)
build(${copy} ${copy}/build/second)

foreach(file src/libvek.so hsk/libhsk.so tools/vekhost)
  file(SHA256 ${WORK_DIR}/first/${file} first)
  file(SHA256 ${copy}/build/second/${file} second)
  if(NOT first STREQUAL second)
    message(SEND_ERROR "${file} differs between two builds")
  endif()
endforeach()
