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
    elseif(MSVC)
        target_compile_options(${target} PRIVATE /utf-8 /W4 /permissive- $<$<BOOL:${TAMAROK_WERROR}>:/WX>)
    endif()
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # Lets the compiler cache see what a precompiled header holds.
        target_compile_options(${target} PRIVATE -fpch-preprocess)
        # g++ 12 sees overlapping copies in plain string concatenation (GCC bug 105651, fixed in 13).
        if(CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
            target_compile_options(${target} PRIVATE -Wno-restrict)
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
