# Installation: headers, static libraries, the program, the CMake package and pkg-config files.
include(CMakePackageConfigHelpers)

set(tamarok_package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Tamarok_Comm)
set(tamarok_exported tamarok_comm)
if(TAMAROK_WITH_EMBEDDED OR TAMAROK_WITH_ODBC)
    list(APPEND tamarok_exported tamarok_tsql)
endif()
if(TAMAROK_WITH_EMBEDDED)
    list(APPEND tamarok_exported tamarok_embedded tamarok_loc tamarok_database)
endif()
if(TAMAROK_WITH_ODBC)
    list(APPEND tamarok_exported tamarok_odbc)
    install(DIRECTORY adapters/odbc/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
endif()

if(TAMAROK_WITH_QT)
    list(APPEND tamarok_exported tamarok_qt)
    install(DIRECTORY adapters/qt/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
endif()
if(TAMAROK_WITH_QT_MAP)
    list(APPEND tamarok_exported tamarok_qt_map)
endif()

install(TARGETS ${tamarok_exported} EXPORT Tamarok_CommTargets ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR})
install(EXPORT Tamarok_CommTargets NAMESPACE Tamarok_Comm:: DESTINATION ${tamarok_package_dir})
install(DIRECTORY include/tamarok DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")

configure_package_config_file(cmake/Tamarok_CommConfig.cmake.in ${PROJECT_BINARY_DIR}/Tamarok_CommConfig.cmake
                              INSTALL_DESTINATION ${tamarok_package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/Tamarok_CommConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/Tamarok_CommConfig.cmake ${PROJECT_BINARY_DIR}/Tamarok_CommConfigVersion.cmake
        DESTINATION ${tamarok_package_dir})

# The pkg-config files name the prefix relative to themselves, so that they are right under any prefix.
file(RELATIVE_PATH tamarok_prefix_from_pkgconfig /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" tamarok_prefix_from_pkgconfig "${tamarok_prefix_from_pkgconfig}")
configure_file(cmake/tamarok_comm.pc.in ${PROJECT_BINARY_DIR}/tamarok_comm.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/tamarok_comm.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

if(TAMAROK_WITH_EMBEDDED)
    if(TAMAROK_WITH_PROGRAM)
        install(TARGETS tamarok RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
    endif()
    install(DIRECTORY loc/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
    # Of the front end, programs need the options of a connection and the definitions of tables, nothing else.
    install(FILES adapters/tsql/include/tamarok_tsql/date_order.h adapters/tsql/include/tamarok_tsql/table_definition.h
            DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tamarok_tsql)
    foreach(part adapters/embedded database)
        install(DIRECTORY ${part}/include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h")
    endforeach()
    configure_file(cmake/tamarok_embedded.pc.in ${PROJECT_BINARY_DIR}/tamarok_embedded.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/tamarok_embedded.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endif()
