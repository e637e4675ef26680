# The installation.  Hosts find it with find_package(vek), which defines the
# targets vek::vek, vek::hsk and vek::fortran, or with pkg-config, as vek and
# vek-hsk.  No installed file contains the prefix, so that it is relocatable.

include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/vek)
set(generated_dir ${PROJECT_BINARY_DIR}/package)

install(TARGETS vek hsk EXPORT vek INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES ${PROJECT_SOURCE_DIR}/include/vek.h ${PROJECT_SOURCE_DIR}/include/hsk.h
              ${PROJECT_SOURCE_DIR}/hsk/hsk_control.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# With the sample installation that the examples find files in.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples/ DESTINATION ${CMAKE_INSTALL_DATADIR}/vek/examples)

# A host that asks for an older release accepts a newer one.
install(EXPORT vek DESTINATION ${package_dir} NAMESPACE vek:: FILE vekConfig.cmake)
write_basic_package_version_file(${generated_dir}/vekConfigVersion.cmake
                                 COMPATIBILITY AnyNewerVersion)
install(FILES ${generated_dir}/vekConfigVersion.cmake DESTINATION ${package_dir})

string(REGEX REPLACE "[^/]+" ".." prefix_from_pc ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(WIN32)
  set(hsk_libs -lhsk)
else() # kept in any order of the libraries, as by vek::hsk
  set(hsk_libs -Wl,--push-state,--no-as-needed,-lhsk,--pop-state)
endif()
foreach(name vek vek-hsk)
  configure_file(${CMAKE_CURRENT_LIST_DIR}/${name}.pc.in ${generated_dir}/${name}.pc @ONLY)
  install(FILES ${generated_dir}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
