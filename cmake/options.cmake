# What all of our own code is compiled with: vek_warnings for everything,
# vek_library_rules for the libraries, which need no C++ runtime library.

add_library(vek_warnings INTERFACE)
target_compile_options(vek_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Werror)
if(VEK_SANITIZE)
  target_compile_options(
    vek_warnings INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                           -fno-omit-frame-pointer)
  target_link_options(vek_warnings INTERFACE -fsanitize=address,undefined)
endif()

add_library(vek_library_rules INTERFACE)
target_compile_options(vek_library_rules INTERFACE -fno-exceptions -fno-rtti
                                                   -fno-threadsafe-statics
                                                   --include=platform/banned.h)
target_link_libraries(vek_library_rules INTERFACE vek_warnings)

if(VEK_FUZZ)
  target_compile_options(vek_library_rules INTERFACE -fsanitize=fuzzer-no-link
                                                     --include=support/state_sections.h)
  target_include_directories(vek_library_rules INTERFACE ${PROJECT_SOURCE_DIR}/fuzz)
endif()

# What is run is counted in the libraries alone.
if(VEK_COVERAGE)
  target_compile_options(vek_library_rules INTERFACE --coverage)
  target_link_options(vek_warnings INTERFACE --coverage)
endif()
