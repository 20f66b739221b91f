# Fuzz targets: programs that clang's libFuzzer feeds with inputs of its own making.

# tamarok_fuzz(name [SOURCES file...] [LIBRARIES target...] [INSIDE folder...]): the program
# <name>_fuzz of <name>_fuzz.cpp in this folder, whose seeds lie in seeds/<name>. SOURCES names further sources, and
# INSIDE folders whose private headers it uses, both from the top of the tree. `scripts/fuzz` builds `fuzz_targets`
# and runs every program listed in fuzz_targets.txt of the build.
function(tamarok_fuzz name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES;INSIDE")
    list(TRANSFORM arg_SOURCES PREPEND ${PROJECT_SOURCE_DIR}/)
    list(TRANSFORM arg_INSIDE PREPEND ${PROJECT_SOURCE_DIR}/)
    add_executable(${name}_fuzz ${name}_fuzz.cpp ${arg_SOURCES})
    tamarok_defaults(${name}_fuzz)
    target_include_directories(${name}_fuzz PRIVATE ${CMAKE_CURRENT_SOURCE_DIR} ${arg_INSIDE})
    target_link_libraries(${name}_fuzz PRIVATE tamarok_comm ${arg_LIBRARIES})
    target_link_options(${name}_fuzz PRIVATE -fsanitize=fuzzer)
    file(GLOB seeds CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/seeds/${name}/*)
    if(NOT seeds)
        message(FATAL_ERROR "The fuzz target ${name} has no seeds in ${CMAKE_CURRENT_SOURCE_DIR}/seeds/${name}.")
    endif()
    if(NOT TARGET fuzz_targets)
        add_custom_target(fuzz_targets)
    endif()
    add_dependencies(fuzz_targets ${name}_fuzz)
    set_property(GLOBAL APPEND_STRING PROPERTY TAMAROK_FUZZ_TARGETS "${name}\n")
    get_property(targets GLOBAL PROPERTY TAMAROK_FUZZ_TARGETS)
    file(WRITE ${PROJECT_BINARY_DIR}/fuzz_targets.txt "${targets}")
endfunction()
