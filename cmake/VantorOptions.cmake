# SPDX-License-Identifier: MIT
# Flags that every target of the project is built with.
set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF) # with them on, `linux` is a macro and our folder names stop compiling
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set_property(GLOBAL PROPERTY USE_FOLDERS ON)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "" FORCE)
endif()
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")

include(GNUInstallDirs)
include(CheckPIESupported)
include(CheckCXXCompilerFlag)
check_pie_supported(LANGUAGES CXX)
find_package(Threads REQUIRED)

set(VANTOR_APART "" CACHE STRING "With CMAKE_UNITY_BUILD: sources that cannot be joined with others, from the top")
set(VANTOR_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")

add_library(vantor-options INTERFACE)
target_compile_options(vantor-options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
  $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion> # which g++'s -Wconversion does not mean either
  $<$<BOOL:${CMAKE_UNITY_BUILD}>:-Wno-shadow> # by what another file, joined with this one, keeps to itself
  -ffunction-sections -fdata-sections)
target_link_options(vantor-options INTERFACE -Wl,--gc-sections -Wl,--as-needed)

if(VANTOR_SANITIZE)
  target_compile_options(vantor-options INTERFACE
    -fsanitize=${VANTOR_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all -g1)
  target_link_options(vantor-options INTERFACE -fsanitize=${VANTOR_SANITIZE})
else()
  # Hardening. Fortify wants an optimised build and does not mix with the sanitizers' own interceptors.
  target_compile_options(vantor-options INTERFACE
    -fstack-protector-strong $<$<CONFIG:Release>:-U_FORTIFY_SOURCE> $<$<CONFIG:Release>:-D_FORTIFY_SOURCE=2>)
  target_link_options(vantor-options INTERFACE -Wl,-z,relro -Wl,-z,now -Wl,-z,noexecstack)
  foreach(flag -fstack-clash-protection -fcf-protection=full)
    string(MAKE_C_IDENTIFIER "VANTOR_HAS${flag}" known)
    check_cxx_compiler_flag(${flag} ${known})
    if(${known})
      target_compile_options(vantor-options INTERFACE ${flag})
    endif()
  endforeach()
endif()

if(VANTOR_FUZZ)
  target_compile_options(vantor-options INTERFACE -fsanitize=fuzzer-no-link)
endif()
