# Compiler flags, chosen by compiler, and the compiler cache.

find_program(TAMAROK_CCACHE ccache)
if(TAMAROK_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # The sloppiness lets the cache take sources with precompiled headers; the base directory and the missing
    # directory hash let two checkouts share their objects.
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime
        CCACHE_BASEDIR=${PROJECT_SOURCE_DIR} CCACHE_NOHASHDIR=1 ${TAMAROK_CCACHE})
endif()

set(tamarok_is_gnu_like FALSE)
if(CMAKE_CXX_COMPILER_ID MATCHES "^(GNU|Clang|AppleClang)$")
    set(tamarok_is_gnu_like TRUE)
endif()

# tamarok_defaults(target): language level, warnings, and the sanitizers where they are on.
function(tamarok_defaults target)
    target_compile_features(${target} PUBLIC cxx_std_20)
    if(tamarok_is_gnu_like)
        target_compile_options(${target} PRIVATE
            -Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast -Wnon-virtual-dtor
            -Woverloaded-virtual $<$<BOOL:${TAMAROK_WERROR}>:-Werror>)
        # One set of objects serves the static and the shared libraries. Visible is what public headers declare; nothing
        # replaces a function of the library, so that the compiler may inline it.
        if(NOT WIN32)
            target_compile_options(${target} PRIVATE
                -fPIC -fno-semantic-interposition -fvisibility=hidden -fvisibility-inlines-hidden)
        endif()
    elseif(MSVC)
        target_compile_options(${target} PRIVATE /utf-8 /W4 /wd4068 /permissive- $<$<BOOL:${TAMAROK_WERROR}>:/WX>)
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # Lets the compiler cache see what a precompiled header holds.
        target_compile_options(${target} PRIVATE -fpch-preprocess)
        # g++ 12 sees overlapping and endless copies in plain string concatenation (GCC bugs 105651 and 105329, fixed in 13).
        if(CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
            target_compile_options(${target} PRIVATE -Wno-restrict -Wno-stringop-overflow -Wno-array-bounds)
        endif()
    endif()
    if(TAMAROK_SANITIZE)
        target_compile_options(${target} PUBLIC -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PUBLIC -fsanitize=address,undefined)
    endif()
    if(TAMAROK_FUZZ)
        # The coverage that guides libFuzzer is wanted of the whole library.
        target_compile_options(${target} PUBLIC
            -fsanitize=fuzzer-no-link,address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
        target_link_options(${target} PUBLIC -fsanitize=address,undefined)
    endif()
endfunction()

# tamarok_standard_headers(target): gives a target of the project the standard headers that most sources include, compiled
# once: a quarter of the time of a build. Each source still includes what it names; check_headers and clang-tidy work
# without them. The target has the options of tamarok_defaults alone.
function(tamarok_standard_headers target)
    if(NOT TARGET tamarok_standard_headers)
        set(source ${PROJECT_BINARY_DIR}/standard_headers.cpp)
        file(GENERATE OUTPUT ${source} CONTENT "// Carries the precompiled header.\n")
        add_library(tamarok_standard_headers OBJECT ${source})
        tamarok_defaults(tamarok_standard_headers)
        target_precompile_headers(tamarok_standard_headers PRIVATE
            <algorithm> <array> <cstddef> <cstdint> <functional> <map> <memory> <optional> <span> <string> <string_view>
            <utility> <variant> <vector>)
    endif()
    target_precompile_headers(${target} REUSE_FROM tamarok_standard_headers)
endfunction()

# tamarok_exact_arithmetic(target): forbids fused multiply-add, which would change last digits from one
# machine to the next.
function(tamarok_exact_arithmetic target)
    if(tamarok_is_gnu_like)
        target_compile_options(${target} PRIVATE -ffp-contract=off)
    elseif(MSVC)
        target_compile_options(${target} PRIVATE /fp:precise)
    endif()
endfunction()

# tamarok_uses_regex(file...): sources with regular expressions of the standard library, in which g++ 12 sees
# uninitialised members under the sanitizers (GCC bug 105562).
function(tamarok_uses_regex)
    if(TAMAROK_SANITIZE AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        set_source_files_properties(${ARGN} PROPERTIES COMPILE_OPTIONS -Wno-maybe-uninitialized)
    endif()
endfunction()
