# Helpers shared by every folder: one library per folder of src/, one test program per folder of tests/.

add_library(velmora_flags INTERFACE)
target_compile_options(velmora_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
# GCC 12 takes `"text" + std::string` for overlapping copies when it optimises (its bug 105651).
target_compile_options(velmora_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
target_include_directories(velmora_flags INTERFACE ${PROJECT_SOURCE_DIR}/src)
if(VELMORA_SANITIZE)
  # Line numbers are all that a report needs of the debug data.
  target_compile_options(velmora_flags INTERFACE -fsanitize=address,undefined -fno-sanitize-recover=all
                                                 -fno-omit-frame-pointer -g1)
  # GCC loses track of std::variant between its own checks and reports members as unset that are never read.
  target_compile_options(velmora_flags INTERFACE $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  target_link_options(velmora_flags INTERFACE -fsanitize=address,undefined)
endif()
if(VELMORA_FUZZ)
  target_compile_options(velmora_flags INTERFACE -fsanitize=fuzzer-no-link,address,undefined
                                                 -fno-sanitize-recover=all -O1)
  target_link_options(velmora_flags INTERFACE -fsanitize=address,undefined)
endif()

# velmora_library(NAME SOURCES ... LINK ...): the static library velmora_NAME.
function(velmora_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_library(velmora_${name} STATIC ${ARG_SOURCES})
  target_link_libraries(velmora_${name} PUBLIC velmora_flags ${ARG_LINK})
  if(VELMORA_SANITIZE)
    target_compile_options(velmora_${name} PRIVATE -O1)
  endif()
endfunction()

# velmora_test(NAME SOURCES ... LINK ...): the program test_NAME, each of its cases a CTest test.
function(velmora_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
  add_executable(test_${name} ${ARG_SOURCES})
  target_link_libraries(test_${name} PRIVATE ${ARG_LINK} velmora_test_main GTest::gtest)
  target_include_directories(test_${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_compile_options(test_${name} PRIVATE -O0)  # to optimise the code of the tests costs more than their runs
  gtest_discover_tests(test_${name} TEST_PREFIX "${name}." DISCOVERY_TIMEOUT 60)
endfunction()
