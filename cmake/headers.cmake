# vek_find_headers(PACKAGE TARGET DEBIAN_PACKAGE HEADER) finds a package that is headers alone,
# which serve any target system.
function(vek_find_headers package target debian_package header)
  find_package(${package} QUIET)
  cmake_path(GET header PARENT_PATH folder)
  if(CMAKE_CROSSCOMPILING AND EXISTS /usr/include/${header})
    file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/headers)
    file(CREATE_LINK /usr/include/${folder} ${CMAKE_CURRENT_BINARY_DIR}/headers/${folder} SYMBOLIC)
    add_library(${target} INTERFACE IMPORTED GLOBAL)
    target_include_directories(${target} SYSTEM INTERFACE ${CMAKE_CURRENT_BINARY_DIR}/headers)
  elseif(NOT ${package}_FOUND)
    message(FATAL_ERROR "vekhost needs ${package}.  Install the package ${debian_package} "
                        "(apt-get install ${debian_package}), or run scripts/demo, which installs it.  "
                        "Set VEK_TOOLS=OFF to build the libraries alone.")
  endif()
endfunction()
