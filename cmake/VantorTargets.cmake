# SPDX-License-Identifier: MIT
# How a folder becomes a target.
#
# Includes are written from the root of the tree ("metrics/MemoryStatus.hpp"), yet no target has that root on its
# search path: each library gets a directory of its own that holds nothing but a link to its folder, and hands that
# on to whoever names it under USES. So an include of a floor that the target may not see does not compile.

function(_vantor_floor name)
  file(RELATIVE_PATH folder "${PROJECT_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}")
  set(floor "${PROJECT_BINARY_DIR}/floors/${name}")
  cmake_path(GET folder PARENT_PATH above)
  file(MAKE_DIRECTORY "${floor}/${above}")
  file(CREATE_LINK "${CMAKE_CURRENT_SOURCE_DIR}" "${floor}/${folder}" SYMBOLIC)
  set(VANTOR_FLOOR "${floor}" PARENT_SCOPE)
  list(JOIN ARGN " " uses)
  set_property(GLOBAL APPEND_STRING PROPERTY VANTOR_FLOORS "${name} ${folder} ${uses}\n")
endfunction()

# Writes build/<preset>/floors.txt: a line for each library and program with its name, its folder, and what it uses.
# A test holds the map in docs/architecture.md against it. Call it when every floor has been declared.
function(vantor_write_floors)
  get_property(floors GLOBAL PROPERTY VANTOR_FLOORS)
  file(WRITE "${PROJECT_BINARY_DIR}/floors.txt" "${floors}")
endfunction()

# Keeps those of the sources that VANTOR_APART names out of joined ones.
function(_vantor_part sources)
  foreach(source IN LISTS sources)
    file(RELATIVE_PATH path "${PROJECT_SOURCE_DIR}" "${CMAKE_CURRENT_SOURCE_DIR}/${source}")
    if(path IN_LIST VANTOR_APART)
      set_source_files_properties(${source} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
    endif()
  endforeach()
endfunction()

# vantor_library(name SOURCES a.cpp … USES lower-floor … LINKS outside-library …)
function(vantor_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES;LINKS" ${ARGN})
  _vantor_floor(${name} ${ARG_USES} ${ARG_LINKS})
  if(ARG_SOURCES)
    _vantor_part("${ARG_SOURCES}")
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC "$<BUILD_INTERFACE:${VANTOR_FLOOR}>")
    target_compile_features(${name} PUBLIC cxx_std_20)
    target_link_libraries(${name} PUBLIC ${ARG_USES} PRIVATE $<BUILD_INTERFACE:vantor-options> ${ARG_LINKS})
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE "$<BUILD_INTERFACE:${VANTOR_FLOOR}>")
    target_link_libraries(${name} INTERFACE ${ARG_USES})
  endif()
endfunction()

# vantor_program(name SOURCES … USES … LINKS …): an installed executable whose own headers only it can see.
function(vantor_program name)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES;LINKS" ${ARGN})
  _vantor_floor(${name} ${ARG_USES} ${ARG_LINKS})
  _vantor_part("${ARG_SOURCES}")
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE "${VANTOR_FLOOR}")
  target_link_libraries(${name} PRIVATE vantor-options ${ARG_USES} ${ARG_LINKS})
  target_compile_definitions(${name} PRIVATE VANTOR_VERSION="${PROJECT_VERSION}")
  add_dependencies(programs ${name})
  set_property(GLOBAL APPEND PROPERTY VANTOR_PROGRAMS ${name})
  install(TARGETS ${name} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
endfunction()

# vantor_test(name SOURCES … USES … LINKS … [LABELS …]): one GoogleTest executable for one folder's tests. Captured
# inputs are found under VANTOR_TEST_DATA, the folder of the calling CMakeLists.txt. The label `threads` puts it among
# those that run under ThreadSanitizer (target thread-tests). Each test runs in a process of its own, and once more in
# turn with all others of its program, as a developer starts it by hand: nothing may be left behind for the next one.
function(vantor_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES;LINKS;LABELS" ${ARGN})
  _vantor_part("${ARG_SOURCES}")
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE vantor-options vantor-test-support ${ARG_USES} ${ARG_LINKS})
  target_compile_definitions(${name} PRIVATE VANTOR_TEST_DATA="${CMAKE_CURRENT_SOURCE_DIR}")
  if("threads" IN_LIST ARG_LABELS)
    if(NOT TARGET thread-tests)
      add_custom_target(thread-tests)
    endif()
    add_dependencies(thread-tests ${name})
  endif()
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 NO_PRETTY_VALUES PROPERTIES TIMEOUT 120 LABELS "${ARG_LABELS}")
  add_test(NAME Whole.${name} COMMAND ${name} --gtest_brief=1)
  set_tests_properties(Whole.${name} PROPERTIES TIMEOUT 120 LABELS release-only)
endfunction()
