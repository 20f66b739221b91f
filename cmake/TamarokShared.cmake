# The shared libraries, and the programs that use them, made of the objects of the static libraries:
#   libtamarok_comm.so       the core; needs the C++ standard library alone
#   libtamarok_backends.so   the databases, the language service and the reference database
# The back ends share the front end of the SQL text, whose inner symbols must not show; so they are one library.

# tamarok_shared_library(name OUTPUT file PARTS target...): a shared library of the objects of other targets. It shows what
# the public headers declare; the version script hides the instantiations of the standard library too.
function(tamarok_shared_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "OUTPUT" "PARTS")
    list(TRANSFORM arg_PARTS REPLACE "(.+)" "$<TARGET_OBJECTS:\\1>" OUTPUT_VARIABLE objects)
    add_library(${name} SHARED ${objects})
    set(symbols ${PROJECT_SOURCE_DIR}/cmake/shared_symbols.map)
    target_link_options(${name} PRIVATE -Wl,--version-script=${symbols} -Wl,-Bsymbolic-functions -Wl,--no-undefined -Wl,--as-needed)
    set_target_properties(${name} PROPERTIES
        OUTPUT_NAME ${arg_OUTPUT} EXPORT_NAME ${arg_OUTPUT} LINKER_LANGUAGE CXX LINK_DEPENDS ${symbols}
        VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} LIBRARY_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/shared)
    target_compile_features(${name} PUBLIC cxx_std_20)
    target_include_directories(${name} INTERFACE $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
endfunction()

# tamarok_shared_program(name OF target PARTS target... [LIBRARIES target...]): the program again, in `shared`, of the objects
# of its parts and with the shared libraries. It links, so the public headers declare all that a program needs.
function(tamarok_shared_program name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "OF" "PARTS;LIBRARIES")
    list(TRANSFORM arg_PARTS REPLACE "(.+)" "$<TARGET_OBJECTS:\\1>" OUTPUT_VARIABLE objects)
    add_executable(${name} $<TARGET_OBJECTS:${arg_OF}> ${objects})
    target_link_libraries(${name} PRIVATE tamarok_backends_shared tamarok_comm_shared ${arg_LIBRARIES})
    target_link_options(${name} PRIVATE -Wl,--as-needed)
    set_target_properties(${name} PROPERTIES
        OUTPUT_NAME ${arg_OF} LINKER_LANGUAGE CXX RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/shared)
endfunction()

get_property(tamarok_rooms GLOBAL PROPERTY TAMAROK_ROOMS)
tamarok_shared_library(tamarok_comm_shared OUTPUT tamarok_comm PARTS ${tamarok_rooms})
set(tamarok_backend_parts
    tamarok_tsql tamarok_embedded tamarok_loc tamarok_database_resources tamarok_database_comparison
    tamarok_database_generator tamarok_database_reference tamarok_database_transfer)
if(TAMAROK_WITH_ODBC)
    list(APPEND tamarok_backend_parts tamarok_odbc)
endif()
tamarok_shared_library(tamarok_backends_shared OUTPUT tamarok_backends PARTS ${tamarok_backend_parts})
target_link_libraries(tamarok_backends_shared
    PUBLIC tamarok_comm_shared PRIVATE SQLite::SQLite3 $<$<BOOL:${TAMAROK_WITH_ODBC}>:ODBC::ODBC>)

tamarok_shared_program(tamarok_program_shared OF tamarok PARTS tamarok_host)
if(TAMAROK_WITH_WORKBENCH)
    tamarok_shared_program(tamarok_workbench_shared OF tamarok-workbench
        PARTS tamarok_workbench_windows tamarok_workbench_work tamarok_host tamarok_qt LIBRARIES Qt6::Widgets)
endif()
