# Installation: headers, libraries, the programs, the CMake package and pkg-config files. The components are the Debian
# packages of cmake/TamarokPackages.cmake; without the shared libraries everything else is the same.
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
endif()
set(tamarok_exported_qt)
if(TAMAROK_WITH_QT)
    list(APPEND tamarok_exported_qt tamarok_qt)
endif()
if(TAMAROK_WITH_QT_MAP)
    list(APPEND tamarok_exported_qt tamarok_qt_map)
endif()

# The windows are of one kind, static; they use the core by its name in the CMake package, be it static or shared.
install(TARGETS ${tamarok_exported} EXPORT Tamarok_CommTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev)
install(EXPORT Tamarok_CommTargets NAMESPACE Tamarok_Comm:: DESTINATION ${tamarok_package_dir} COMPONENT dev)
if(tamarok_exported_qt)
    install(TARGETS ${tamarok_exported_qt} EXPORT Tamarok_CommQtTargets
            ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev)
    install(EXPORT Tamarok_CommQtTargets NAMESPACE Tamarok_Comm:: DESTINATION ${tamarok_package_dir} COMPONENT dev)
endif()
if(TAMAROK_SHARED)
    # The names of the static libraries, for programs that link them.
    foreach(part tsql embedded loc database odbc)
        if(TARGET tamarok_${part})
            add_library(tamarok_${part}_shared INTERFACE)
            target_link_libraries(tamarok_${part}_shared INTERFACE tamarok_backends_shared)
            set_target_properties(tamarok_${part}_shared PROPERTIES EXPORT_NAME tamarok_${part})
            list(APPEND tamarok_exported_shared tamarok_${part}_shared)
        endif()
    endforeach()
    install(TARGETS tamarok_comm_shared tamarok_backends_shared ${tamarok_exported_shared} EXPORT Tamarok_CommSharedTargets
            LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT libraries NAMELINK_COMPONENT dev)
    install(EXPORT Tamarok_CommSharedTargets NAMESPACE Tamarok_Comm:: DESTINATION ${tamarok_package_dir} COMPONENT dev)
endif()

# tamarok_compressed(source file): the source compressed as Debian wants its manual pages and changelogs.
function(tamarok_compressed source file)
    cmake_path(GET file PARENT_PATH folder)
    file(MAKE_DIRECTORY ${folder})
    execute_process(COMMAND gzip -9nc ${PROJECT_SOURCE_DIR}/${source} OUTPUT_FILE ${file} COMMAND_ERROR_IS_FATAL ANY)
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${source})
endfunction()

# tamarok_install_manual(source component): a manual page, compressed where packages are made.
function(tamarok_install_manual source component)
    set(file ${PROJECT_SOURCE_DIR}/${source})
    if(TAMAROK_SHARED)
        cmake_path(GET source FILENAME name)
        set(file ${PROJECT_BINARY_DIR}/debian/${name}.gz)
        tamarok_compressed(${source} ${file})
    endif()
    install(FILES ${file} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT ${component})
endfunction()

# tamarok_install_headers(folder): the headers of a folder `include`.
function(tamarok_install_headers folder)
    install(DIRECTORY ${folder}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev FILES_MATCHING PATTERN "*.h")
endfunction()
tamarok_install_headers(include)
if(TAMAROK_WITH_ODBC)
    tamarok_install_headers(adapters/odbc/include)
endif()
if(TAMAROK_WITH_QT)
    tamarok_install_headers(adapters/qt/include)
endif()
if(TAMAROK_WITH_EMBEDDED)
    tamarok_install_headers(loc/include)
    tamarok_install_headers(adapters/embedded/include)
    tamarok_install_headers(database/include)
    # Of the front end, programs need dates, names, types and the definitions of tables, nothing else.
    foreach(header date_order names schema table_definition type_rules types)
        install(FILES adapters/tsql/include/tamarok_tsql/${header}.h DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/tamarok_tsql
                COMPONENT dev)
    endforeach()
endif()

configure_package_config_file(cmake/Tamarok_CommConfig.cmake.in ${PROJECT_BINARY_DIR}/Tamarok_CommConfig.cmake
                              INSTALL_DESTINATION ${tamarok_package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/Tamarok_CommConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/Tamarok_CommConfig.cmake ${PROJECT_BINARY_DIR}/Tamarok_CommConfigVersion.cmake
        DESTINATION ${tamarok_package_dir} COMPONENT dev)

# The pkg-config files name the prefix relative to themselves, so that they are right under any prefix. Where there are
# shared libraries, they name these.
file(RELATIVE_PATH tamarok_prefix_from_pkgconfig /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
string(REGEX REPLACE "/$" "" tamarok_prefix_from_pkgconfig "${tamarok_prefix_from_pkgconfig}")
set(tamarok_embedded_libs "-ltamarok_loc -ltamarok_database -ltamarok_embedded -ltamarok_tsql")
set(tamarok_embedded_requires "tamarok_comm sqlite3")
if(TAMAROK_SHARED)
    set(tamarok_embedded_libs "-ltamarok_backends")
    set(tamarok_embedded_requires "tamarok_comm")
endif()
set(tamarok_pkgconfig_files tamarok_comm)
if(TAMAROK_WITH_EMBEDDED)
    list(APPEND tamarok_pkgconfig_files tamarok_embedded)
endif()
foreach(file ${tamarok_pkgconfig_files})
    configure_file(cmake/${file}.pc.in ${PROJECT_BINARY_DIR}/${file}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${file}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)
endforeach()

if(TAMAROK_WITH_PROGRAM)
    set(program tamarok)
    if(TAMAROK_SHARED)
        set(program tamarok_program_shared)
    endif()
    install(TARGETS ${program} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT program)
    install(FILES apps/tamarok/share/tamarok.bash DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions
            RENAME tamarok COMPONENT program)
    install(FILES apps/tamarok/share/_tamarok DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions
            COMPONENT program)
    tamarok_install_manual(apps/tamarok/share/tamarok.1 program)
endif()
if(TAMAROK_WITH_WORKBENCH)
    set(program tamarok-workbench)
    if(TAMAROK_SHARED)
        set(program tamarok_workbench_shared)
    endif()
    install(TARGETS ${program} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT workbench)
    tamarok_install_manual(apps/workbench/share/tamarok-workbench.1 workbench)
    install(FILES apps/workbench/share/tamarok-workbench.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications
            COMPONENT workbench)
    install(DIRECTORY ${PROJECT_BINARY_DIR}/icons/ DESTINATION ${CMAKE_INSTALL_DATADIR}/icons COMPONENT workbench)
endif()
