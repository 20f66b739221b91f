# The kinds of targets: rooms of the core, tests, benchmarks.

# tamarok_room(name SOURCES file... [USES room...]): one subsystem of the core, an object library of which
# the core library is made. It sees the public headers, its own folder, and `src/<room>/include` of the
# rooms that it uses (and of those that they use); an include against the drawing does not compile.
function(tamarok_room name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;USES")
    add_library(tamarok_${name} OBJECT ${arg_SOURCES})
    tamarok_defaults(tamarok_${name})
    tamarok_standard_headers(tamarok_${name})
    target_include_directories(tamarok_${name}
        PUBLIC ${PROJECT_SOURCE_DIR}/include ${CMAKE_CURRENT_SOURCE_DIR}/include
        PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
    list(TRANSFORM arg_USES PREPEND tamarok_)
    # Through interfaces, since the link to an object library would hand over its objects too.
    foreach(used ${arg_USES})
        target_include_directories(tamarok_${name} PUBLIC $<TARGET_PROPERTY:${used},INTERFACE_INCLUDE_DIRECTORIES>)
    endforeach()
    set_property(GLOBAL APPEND PROPERTY TAMAROK_ROOMS tamarok_${name})
    file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
    tamarok_check_headers(tamarok_${name} FOLDERS ${folder})
endfunction()

# What the test programs have in common: GoogleTest's headers, compiled once.
function(tamarok_test_headers)
    file(GENERATE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/test_headers.cpp CONTENT "// Carries the precompiled header.\n")
    add_library(tamarok_test_headers OBJECT ${CMAKE_CURRENT_BINARY_DIR}/test_headers.cpp)
    tamarok_defaults(tamarok_test_headers)
    target_link_libraries(tamarok_test_headers PRIVATE GTest::gtest GTest::gmock)
    target_precompile_headers(tamarok_test_headers PRIVATE <gtest/gtest.h> <gmock/gmock.h>)
endfunction()

# tamarok_test(name SOURCES file... [LIBRARIES target...] [INSIDE folder...] [ONE_RUN]): one GoogleTest program, each
# case known to CTest. INSIDE names folders whose private headers it tests, from the top of the tree. ONE_RUN makes one
# CTest case of the whole program: for cases that share a database, which a process for each would make anew.
function(tamarok_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "ONE_RUN" "" "SOURCES;LIBRARIES;INSIDE")
    add_executable(${name} ${arg_SOURCES})
    tamarok_defaults(${name})
    list(TRANSFORM arg_INSIDE PREPEND ${PROJECT_SOURCE_DIR}/)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests ${arg_INSIDE})
    target_link_libraries(${name} PRIVATE tamarok_comm ${arg_LIBRARIES} GTest::gtest GTest::gmock GTest::gtest_main)
    target_precompile_headers(${name} REUSE_FROM tamarok_test_headers)
    if(arg_ONE_RUN)
        add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
        set_tests_properties(${name} PROPERTIES TIMEOUT 600)
        return()
    endif()
    # Values of parameters stay out of the names: of some only the bytes can be printed, addresses among them.
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 NO_PRETTY_VALUES PROPERTIES TIMEOUT 300)
endfunction()

# tamarok_bench(name SOURCES file... [LIBRARIES target...] [INSIDE folder...]): one benchmark program; never
# run by the tests.
function(tamarok_bench name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBRARIES;INSIDE")
    add_executable(${name} ${arg_SOURCES})
    tamarok_defaults(${name})
    list(TRANSFORM arg_INSIDE PREPEND ${PROJECT_SOURCE_DIR}/)
    target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/bench ${arg_INSIDE})
    target_link_libraries(${name} PRIVATE tamarok_comm ${arg_LIBRARIES} benchmark::benchmark benchmark::benchmark_main)
endfunction()

# tamarok_check_headers(target FOLDERS folder...): each header of the folders compiles by
# itself, without precompiled headers, as the target sees it. Built by `check_headers`.
function(tamarok_check_headers target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "FOLDERS")
    if(NOT TARGET check_headers)
        add_custom_target(check_headers)
    endif()
    set(sources "")
    set(other_system windows)
    if(WIN32)
        set(other_system posix)
    endif()
    foreach(folder ${arg_FOLDERS})
        file(GLOB_RECURSE headers CONFIGURE_DEPENDS RELATIVE ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/${folder}/*.h)
        # A back end keeps what differs by system in folders of these names.
        list(FILTER headers EXCLUDE REGEX "^adapters/[a-z]+/${other_system}/")
        foreach(header ${headers})
            set(source ${CMAKE_CURRENT_BINARY_DIR}/headers/${header}.cpp)
            file(GENERATE OUTPUT ${source} CONTENT "#include \"${PROJECT_SOURCE_DIR}/${header}\"\n")
            list(APPEND sources ${source})
        endforeach()
    endforeach()
    if(NOT sources)
        return()
    endif()
    add_library(${target}_headers OBJECT EXCLUDE_FROM_ALL ${sources})
    tamarok_defaults(${target}_headers)
    target_include_directories(${target}_headers PRIVATE $<TARGET_PROPERTY:${target},INCLUDE_DIRECTORIES>)
    set_target_properties(${target}_headers PROPERTIES LINK_LIBRARIES "$<TARGET_PROPERTY:${target},LINK_LIBRARIES>")
    add_dependencies(check_headers ${target}_headers)
endfunction()
