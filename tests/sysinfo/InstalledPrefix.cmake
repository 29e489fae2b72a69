# SPDX-License-Identifier: MIT
# Installs the libraries into a fresh prefix and uses them from outside, through CMake and through pkg-config; and
# compiles each installed header alone. Run with -DBUILD=, -DWORK=, -DCOMPILER=, -DGENERATOR= and -DFLAGS=.
set(prefix "${WORK}/prefix")
file(REMOVE_RECURSE "${WORK}")

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "failed: ${ARGN}\n${output}")
  endif()
  message(STATUS "${output}")
endfunction()

run("${CMAKE_COMMAND}" --install "${BUILD}" --prefix "${prefix}" --component sysinfo-dev)
file(RENAME "${prefix}" "${WORK}/moved") # nothing may remember where it was installed
set(prefix "${WORK}/moved")

set(documents "${prefix}/share/doc/vantor")
foreach(file sysinfo.md LICENSE)
  if(NOT EXISTS "${documents}/${file}")
    message(FATAL_ERROR "${file} is not installed")
  endif()
endforeach()
run("${CMAKE_COMMAND}" -G "${GENERATOR}" -S "${documents}/examples/sysinfo" -B "${WORK}/example" "-DCMAKE_PREFIX_PATH=${prefix}"
  "-DCMAKE_CXX_COMPILER=${COMPILER}" "-DCMAKE_CXX_FLAGS=${FLAGS}")
run("${CMAKE_COMMAND}" --build "${WORK}/example")
run("${WORK}/example/sysinfo-main")
run("${WORK}/example/sysinfo-protocols")

file(GLOB_RECURSE package "${prefix}/*/vantor-sysinfo.pc")
cmake_path(GET package PARENT_PATH folder)
separate_arguments(flags UNIX_COMMAND "${FLAGS}")
find_program(pkgconfig NAMES pkg-config pkgconf)
if(pkgconfig)
  execute_process(COMMAND "${CMAKE_COMMAND}" -E env "PKG_CONFIG_PATH=${folder}"
    "${pkgconfig}" --cflags --libs vantor-sysinfo OUTPUT_VARIABLE found COMMAND_ERROR_IS_FATAL ANY)
  separate_arguments(found UNIX_COMMAND "${found}")
  run("${COMPILER}" -std=c++20 ${flags} "${documents}/examples/sysinfo/main.cpp" -o "${WORK}/by-pkg-config" ${found})
  run("${WORK}/by-pkg-config")
endif()

# Beside a project whose own headers have the names that ours have in their tree.
file(GLOB_RECURSE headers RELATIVE "${prefix}/include" "${prefix}/include/vantor/*.hpp")
foreach(header IN LISTS headers)
  string(REGEX REPLACE "^vantor/(platform/)?" "" own "${header}")
  foreach(folder sysinfo platform)
    file(WRITE "${WORK}/own/${folder}/${own}" "#error another project's header was taken for ours\n")
  endforeach()
endforeach()
foreach(header IN LISTS headers)
  file(WRITE "${WORK}/alone.cpp" "#include <${header}>\n#include <${header}>\n")
  run("${COMPILER}" -std=c++20 -Wall -Wextra -Werror -fsyntax-only "-I${WORK}/own" "-I${prefix}/include" "${WORK}/alone.cpp")
endforeach()

execute_process(COMMAND "${COMPILER}" -std=c++17 -fsyntax-only "-I${prefix}/include" "${WORK}/alone.cpp"
  ERROR_VARIABLE refused)
string(REGEX MATCHALL "error:" errors "${refused}")
list(LENGTH errors count)
if(NOT refused MATCHES "need C\\+\\+20: compile with -std=c\\+\\+20" OR count GREATER 2)
  message(FATAL_ERROR "an older language level is not refused in one sentence\n${refused}")
endif()
list(LENGTH headers count)
if(count LESS 30)
  message(FATAL_ERROR "only ${count} headers were installed")
endif()
