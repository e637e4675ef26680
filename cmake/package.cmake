# What is installed, and how hosts find it: by find_package(vek), with the
# targets vek::vek, vek::hsk and vek::fortran, and by pkg-config, with vek and
# vek-hsk.  No file holds the prefix, so that the whole can be moved.

include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/vek)
set(generated_dir ${PROJECT_BINARY_DIR}/package)

install(TARGETS vek hsk EXPORT vek INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(FILES ${PROJECT_SOURCE_DIR}/include/vek.h ${PROJECT_SOURCE_DIR}/hsk/hsk_control.h
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})

# A newer release serves a host of an older one.
install(EXPORT vek DESTINATION ${package_dir} NAMESPACE vek:: FILE vekConfig.cmake)
write_basic_package_version_file(${generated_dir}/vekConfigVersion.cmake
                                 COMPATIBILITY AnyNewerVersion)
install(FILES ${generated_dir}/vekConfigVersion.cmake DESTINATION ${package_dir})

string(REGEX REPLACE "[^/]+" ".." prefix_from_pc ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
foreach(name vek vek-hsk)
  configure_file(${CMAKE_CURRENT_LIST_DIR}/${name}.pc.in ${generated_dir}/${name}.pc @ONLY)
  install(FILES ${generated_dir}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endforeach()
