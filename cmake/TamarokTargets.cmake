# What every target of the project has in common.

find_program(TAMAROK_CCACHE ccache)
if(TAMAROK_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${TAMAROK_CCACHE})
endif()

function(tamarok_defaults target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast -Wnon-virtual-dtor
        -Woverloaded-virtual -Werror)
    # g++ 12 sees overlapping copies in plain string concatenation (GCC bug 105651, mended in 13).
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        target_compile_options(${target} PRIVATE -Wno-restrict)
    endif()
    if(TAMAROK_SANITIZE)
        target_compile_options(${target} PUBLIC -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PUBLIC -fsanitize=address,undefined)
    endif()
endfunction()

# tamarok_uses_regex(file...): sources with regular expressions of the standard library, in which g++ 12 sees
# uninitialised members under the sanitizers (GCC bug 105562).
function(tamarok_uses_regex)
    if(TAMAROK_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        set_source_files_properties(${ARGN} PROPERTIES COMPILE_OPTIONS -Wno-maybe-uninitialized)
    endif()
endfunction()

# tamarok_test(name SOURCES file... LIBRARIES target...): one GoogleTest program, each case known to CTest.
function(tamarok_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
    add_executable(${name} ${arg_SOURCES})
    tamarok_defaults(${name})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/tests)
    target_link_libraries(${name} PRIVATE tamarok_comm ${arg_LIBRARIES} GTest::gtest GTest::gmock GTest::gtest_main)
    target_precompile_headers(${name} PRIVATE <gtest/gtest.h>)
    # Values of parameters stay out of the names: of some only the bytes can be printed, addresses among them.
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 NO_PRETTY_VALUES PROPERTIES TIMEOUT 300)
endfunction()

# tamarok_bench(name SOURCES file... LIBRARIES target...): one benchmark program; never run by the tests.
function(tamarok_bench name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES")
    add_executable(${name} ${arg_SOURCES})
    tamarok_defaults(${name})
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/src ${PROJECT_SOURCE_DIR}/bench)
    target_link_libraries(${name} PRIVATE tamarok_comm ${arg_LIBRARIES} benchmark::benchmark benchmark::benchmark_main)
endfunction()
