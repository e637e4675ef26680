# Hosts in C, C++ and Fortran, built against an installation in each of the two ways
# that README.md describes, and run on the sample installation.

cmake_minimum_required(VERSION 3.25)

function(run)
  execute_process(COMMAND ${ARGN} OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# Check the end of what a host prints.
function(expect output)
  execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
  if(NOT text MATCHES "${output}\n$")
    message(SEND_ERROR "${ARGN} printed '${text}'")
  endif()
endfunction()

# The installation is moved: no file in it may contain the original prefix.
file(REMOVE_RECURSE ${WORK_DIR})
run(${CMAKE_COMMAND} --install ${BUILD} --config "${CONFIG}" --prefix ${WORK_DIR}/first)
set(prefix ${WORK_DIR}/prefix)
file(RENAME ${WORK_DIR}/first ${prefix})
set(ENV{CMAKE_PREFIX_PATH} ${prefix})
file(GLOB_RECURSE pc_files ${prefix}/*.pc)
list(GET pc_files 0 pc_file)
cmake_path(GET pc_file PARENT_PATH pc_dir)
set(ENV{PKG_CONFIG_PATH} ${pc_dir})

# The host is the program that README.md shows, in both languages.
file(READ ${SOURCE}/README.md readme)
if(NOT readme MATCHES "\n```c\n(#include [^`]*)```")
  message(FATAL_ERROR "README.md has no host")
endif()
set(host_C ${WORK_DIR}/host.c)
set(host_CXX ${WORK_DIR}/host.cpp)
file(WRITE ${host_C} "${CMAKE_MATCH_1}")
file(WRITE ${host_CXX} "${CMAKE_MATCH_1}")

# The CMake package.
function(build source target)
  set(build ${WORK_DIR}/build_${target})
  run(${CMAKE_COMMAND} -S ${source} -B ${build} -G ${GENERATOR} -DCMAKE_BUILD_TYPE=Debug ${ARGN})
  run(${CMAKE_COMMAND} --build ${build})
endfunction()
build(${SOURCE}/tests/library/hosts hosts -DCMAKE_C_COMPILER=${C} -DCMAKE_CXX_COMPILER=${CXX}
      -DHOST_C=${host_C} -DHOST_CXX=${host_CXX})

# pkg-config.
function(pkg_config output)
  execute_process(
    COMMAND ${PKG_CONFIG} ${ARGN}
    OUTPUT_VARIABLE text
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(text UNIX_COMMAND "${text}")
  set(${output} ${text} PARENT_SCOPE)
endfunction()
pkg_config(flags --cflags --libs vek vek-hsk)
pkg_config(libdir --variable=libdir vek)
list(APPEND flags -Wl,-rpath,${libdir})
set(warnings -Wall -Wextra -Wpedantic -Werror)
run(${C} ${warnings} ${host_C} ${flags} -o ${WORK_DIR}/host_C)
run(${CXX} ${warnings} ${host_CXX} ${flags} -o ${WORK_DIR}/host_CXX)

if(FORTRAN)
  build(${SOURCE}/examples/solver solver -DCMAKE_Fortran_COMPILER=${FORTRAN})
  pkg_config(module --variable=fortran vek)
  file(MAKE_DIRECTORY ${WORK_DIR}/modules)
  execute_process(
    COMMAND ${FORTRAN} ${FORTRAN_WARNINGS} ${module} ${SOURCE}/examples/solver/solver.f90 ${flags}
            -o ${WORK_DIR}/solver
    WORKING_DIRECTORY ${WORK_DIR}/modules COMMAND_ERROR_IS_FATAL ANY)
endif()

# The sample installation, in which topdir ends in a separator.
set(sample ${WORK_DIR}/sample)
file(COPY ${SOURCE}/examples/ DESTINATION ${sample})
foreach(name QNS_PRODUCT_NAME KLV_KESTREL_PRIVATE_CFG KLV_VEK_SEARCH KLV_UPDATE_CFG)
  unset(ENV{${name}})
endforeach()
set(ENV{HOME} ${sample}/home)
set(ENV{topdir} ${sample}/install/)
set(ENV{KLV_PRODUCT_NAME} kestrel)
set(ENV{KLV_KESTREL_SITE} ${sample}/site)
set(ENV{KLV_USER_PLUGIN_DIR} ${sample}/plugins)

foreach(host ${WORK_DIR}/build_hosts/host_C ${WORK_DIR}/build_hosts/host_CXX ${WORK_DIR}/host_C
             ${WORK_DIR}/host_CXX)
  expect("\n${sample}/install/kestrel/kestrel_shared.vek/dampers.tbl/road_front.dpr" ${host})
endforeach()
if(FORTRAN)
  foreach(solver ${WORK_DIR}/build_solver/solver ${WORK_DIR}/solver)
    expect("\ntread   ${sample}/plugins/heron/heron.vek/treads.tbl/rain.trd: rain tread" ${solver}
           ${sample}/models/estate.model)
  endforeach()
endif()
