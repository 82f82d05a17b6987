# Helpers shared by every folder: one library per folder of src/, one test program per folder of tests/.

add_library(velmora_flags INTERFACE)
target_compile_options(velmora_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
# GCC 12 takes `"text" + std::string` for overlapping copies when it optimises (its bug 105651).
target_compile_options(velmora_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
target_include_directories(velmora_flags INTERFACE ${PROJECT_SOURCE_DIR}/src)
if(VELMORA_PRECOMPILED)
  # For ccache.
  target_compile_options(velmora_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>
                                                 "$<$<CXX_COMPILER_ID:Clang>:SHELL:-Xclang -fno-pch-timestamp>")
endif()
if(VELMORA_SANITIZE)
  target_compile_options(velmora_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                                 -fno-omit-frame-pointer)
  # GCC loses track of std::variant between its own checks and reports members as unset that are never read.
  target_compile_options(velmora_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  target_link_options(velmora_flags INTERFACE -fsanitize=address,undefined -fuse-ld=lld)  # a fifth of the usual time
endif()
if(VELMORA_FUZZ)
  target_compile_options(velmora_flags INTERFACE -fsanitize=fuzzer-no-link,address,undefined
                                                 -fno-sanitize-recover=all -O1)
  target_link_options(velmora_flags INTERFACE -fsanitize=address,undefined)
endif()

# To optimise the code of the tests costs more than their runs.
set(velmora_test_options -O0)

# velmora_library(NAME SOURCES ... LINK ... [HEADERS SET]): the static library velmora_NAME.
function(velmora_library name)
  cmake_parse_arguments(ARG "" "HEADERS" "SOURCES;LINK" HEADERS library_headers ${ARGN})
  add_library(velmora_${name} STATIC ${ARG_SOURCES})
  target_link_libraries(velmora_${name} PUBLIC velmora_flags ${ARG_LINK})
  velmora_reuse(velmora_${name} ${ARG_HEADERS})
  set_property(GLOBAL APPEND PROPERTY velmora_libraries velmora_${name})
endfunction()

# velmora_prefer_libraries(TARGET LIBRARY...): of the functions that both TARGET and the libraries of ours below it have
# made of one template, the linker takes those of the libraries, which are optimised: it takes what it sees first.
function(velmora_prefer_libraries target)
  get_property(ours GLOBAL PROPERTY velmora_libraries)
  set(found "")
  set(left ${ARGN})
  while(left)
    list(POP_FRONT left library)
    if(library IN_LIST ours AND NOT library IN_LIST found)
      list(APPEND found ${library})
      get_target_property(below ${library} INTERFACE_LINK_LIBRARIES)
      list(APPEND left ${below})
    endif()
  endwhile()
  list(TRANSFORM found REPLACE "(.+)" "$<TARGET_FILE:\\1>")
  target_link_options(${target} PRIVATE LINKER:--whole-archive ${found} LINKER:--no-whole-archive)
endfunction()

# velmora_test(NAME SOURCES ... LINK ... [HEADERS SET] [SHARDS N] [WITH_PROGRAMS]): the program test_NAME as a CTest test, or
# as N that share its cases (a process for each case would cost more than most cases). Built by the target unit_tests and
# labelled `unit`; WITH_PROGRAMS: built and run wherever the programs are.
add_custom_target(unit_tests)
function(velmora_test name)
  cmake_parse_arguments(ARG "WITH_PROGRAMS" "HEADERS;SHARDS" "SOURCES;LINK" HEADERS test_headers SHARDS 1 ${ARGN})
  add_executable(test_${name} ${ARG_SOURCES})
  target_link_libraries(test_${name} PRIVATE ${ARG_LINK} velmora_test_main GTest::gtest)
  target_include_directories(test_${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_compile_options(test_${name} PRIVATE ${velmora_test_options})
  velmora_prefer_libraries(test_${name} ${ARG_LINK})
  velmora_reuse(test_${name} ${ARG_HEADERS})
  if(NOT ARG_WITH_PROGRAMS)
    set_target_properties(test_${name} PROPERTIES EXCLUDE_FROM_ALL ON)
    add_dependencies(unit_tests test_${name})
  endif()
  foreach(shard RANGE 1 ${ARG_SHARDS})
    set(test ${name})
    if(ARG_SHARDS GREATER 1)
      set(test ${name}.${shard})
    endif()
    math(EXPR index "${shard} - 1")
    add_test(NAME ${test} COMMAND test_${name})
    set_tests_properties(${test} PROPERTIES ENVIRONMENT "GTEST_TOTAL_SHARDS=${ARG_SHARDS};GTEST_SHARD_INDEX=${index}")
    if(ARG_SHARDS GREATER 1)
      set_tests_properties(${test} PROPERTIES COST 100)  # begins early
    endif()
    if(NOT ARG_WITH_PROGRAMS)
      set_tests_properties(${test} PROPERTIES LABELS unit)
    endif()
  endforeach()
endfunction()
