# SPDX-License-Identifier: MIT
# vantor_fuzz(name SOURCES … USES …): one entry point for hostile bytes, LLVMFuzzerTestOneInput in the sources. With
# VANTOR_FUZZ it becomes fuzz-<name>, which looks for new inputs:
#   build/fuzz/fuzz/fuzz-<name> fuzz/corpus/<name> [-max_total_time=600] [-dict=fuzz/dictionaries/<name>.dict]
# With VANTOR_TESTS a test feeds it the inputs under fuzz/corpus/<name>, with any compiler.
function(vantor_fuzz name)
  cmake_parse_arguments(ARG "" "" "SOURCES;USES" ${ARGN})
  if(VANTOR_FUZZ)
    add_executable(fuzz-${name} ${ARG_SOURCES})
    target_link_libraries(fuzz-${name} PRIVATE vantor-options platform-core ${ARG_USES})
    target_link_options(fuzz-${name} PRIVATE -fsanitize=fuzzer)
  endif()
  if(VANTOR_TESTS)
    add_executable(replay-${name} ${ARG_SOURCES} "${PROJECT_SOURCE_DIR}/fuzz/ReplayCorpus.cpp")
    target_link_libraries(replay-${name} PRIVATE vantor-options platform-core ${ARG_USES})
    list(GET ARG_SOURCES 0 reader)
    cmake_path(GET reader STEM reader)
    add_test(NAME FuzzCorpus.${reader} COMMAND replay-${name} "${PROJECT_SOURCE_DIR}/fuzz/corpus/${name}")
    set_tests_properties(FuzzCorpus.${reader} PROPERTIES TIMEOUT 120)
  endif()
endfunction()
