# Compiler and linker options: vek_warnings for all of our code, vek_hardening for what is
# installed, vek_string_warnings for the tools, vek_library_rules for the two libraries, which
# need no C++ runtime library.

# Users have the warnings that their compiler gives by default: a compiler that we do not
# know can have new ones, which must not end the build.
add_library(vek_warnings INTERFACE)
if(VEK_WERROR)
  target_compile_options(vek_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Werror)
endif()
if(VEK_SANITIZE)
  target_compile_options(
    vek_warnings INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                           -fno-omit-frame-pointer)
  target_link_options(vek_warnings INTERFACE -fsanitize=address,undefined)
endif()

# A memory error should end the process rather than let an attacker control it.
# Not for the sanitizers, which have checks of their own.
include(CheckCXXCompilerFlag)
check_cxx_compiler_flag(-fcf-protection VEK_HAS_CF_PROTECTION)
add_library(vek_hardening INTERFACE)
if(NOT VEK_SANITIZE)
  set(optimized $<CONFIG:Release,RelWithDebInfo,MinSizeRel>)
  target_compile_options(
    vek_hardening INTERFACE -fstack-protector-strong
                            $<$<BOOL:${VEK_HAS_CF_PROTECTION}>:-fcf-protection>)
  target_compile_definitions(vek_hardening INTERFACE $<${optimized}:_FORTIFY_SOURCE=2>)
  if(WIN32)
    target_link_options(vek_hardening INTERFACE
                        -Wl,--dynamicbase,--nxcompat,--high-entropy-va)
    target_link_libraries(vek_hardening INTERFACE -l:libssp.a) # static, to need one DLL less
  else()
    target_link_options(vek_hardening INTERFACE -Wl,-z,relro,-z,now)
  endif()
endif()

add_library(vek_library_rules INTERFACE)
target_compile_options(vek_library_rules INTERFACE -fno-exceptions -fno-rtti
                                                   -fno-threadsafe-statics
                                                   --include=platform/banned.h)
target_link_libraries(vek_library_rules INTERFACE vek_warnings vek_hardening)

if(VEK_FUZZ)
  target_compile_options(vek_library_rules INTERFACE -fsanitize=fuzzer-no-link
                                                     --include=support/state_sections.h)
  target_include_directories(vek_library_rules INTERFACE ${PROJECT_SOURCE_DIR}/fuzz)
endif()

# Coverage is measured in the libraries only.
if(VEK_COVERAGE)
  target_compile_options(vek_library_rules INTERFACE --coverage)
  target_link_options(vek_warnings INTERFACE --coverage)
endif()

# For sources with std::string: GCC 12 gives false warnings when it optimizes them.
add_library(vek_string_warnings INTERFACE)
target_compile_options(vek_string_warnings INTERFACE
                       "$<$<CXX_COMPILER_ID:GNU>:-Wno-restrict;-Wno-maybe-uninitialized>")
