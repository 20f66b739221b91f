# The Debian packages, made by CPack of the components of TamarokInstall.cmake.

# What Debian wants beside the files of a package: copyright and changelog.
tamarok_compressed(packaging/changelog ${PROJECT_BINARY_DIR}/debian/changelog.Debian.gz)
set(tamarok_changelog ${PROJECT_BINARY_DIR}/debian/changelog.Debian.gz)
file(STRINGS packaging/changelog tamarok_first_line LIMIT_COUNT 1)
if(NOT tamarok_first_line MATCHES "^tamarok-comm \\(${PROJECT_VERSION}-([0-9]+)\\) ")
    message(FATAL_ERROR "packaging/changelog begins with '${tamarok_first_line}'; the version is ${PROJECT_VERSION}.")
endif()
set(tamarok_revision ${CMAKE_MATCH_1})

# tamarok_package(component NAME package SECTION section [DEPENDS text] [RECOMMENDS text] [SUGGESTS text] SUMMARY text TEXT text)
function(tamarok_package component)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "NAME;SECTION;DEPENDS;RECOMMENDS;SUGGESTS;SUMMARY;TEXT" "")
    set(documents ${CMAKE_INSTALL_DATADIR}/doc/${arg_NAME})
    install(FILES packaging/copyright ${tamarok_changelog} DESTINATION ${documents} COMPONENT ${component})
    if(EXISTS ${PROJECT_SOURCE_DIR}/packaging/${arg_NAME}.lintian-overrides)
        install(FILES packaging/${arg_NAME}.lintian-overrides DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
                RENAME ${arg_NAME} COMPONENT ${component})
    endif()
    string(TOUPPER ${component} key)
    foreach(field NAME SECTION DEPENDS RECOMMENDS SUGGESTS)
        set(CPACK_DEBIAN_${key}_PACKAGE_${field} "${arg_${field}}" PARENT_SCOPE)
    endforeach()
    set(CPACK_DEBIAN_${key}_DESCRIPTION "${arg_SUMMARY}\n${arg_TEXT}" PARENT_SCOPE)
    set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} ${component} PARENT_SCOPE)
endfunction()

set(CPACK_COMPONENTS_ALL)
set(tamarok_library_package libtamarok-comm${PROJECT_VERSION_MAJOR})
set(tamarok_needs_library "${tamarok_library_package} (= ${PROJECT_VERSION}-${tamarok_revision})")
set(tamarok_common
"Tamarok_Comm is the component library of an application of forestry and
the timber trade: lists by numbered columns, code fields, conversions,
locks, rights, round timber and options, over SQL Server or an embedded
database.")
tamarok_package(libraries NAME ${tamarok_library_package} SECTION libs
    SUMMARY "component library of a timber trade application"
    TEXT "${tamarok_common}
.
This package has the shared libraries.")
tamarok_package(dev NAME libtamarok-comm-dev SECTION libdevel
    DEPENDS "${tamarok_needs_library}"
    SUGGESTS "libsqlite3-dev, unixodbc-dev, qt6-base-dev, qt6-webengine-dev"
    SUMMARY "component library of a timber trade application (development)"
    TEXT "${tamarok_common}
.
This package has the headers, the static libraries, those of Qt programs
among them, and the files of CMake and pkg-config. Static programs need
libsqlite3-dev and unixodbc-dev, Qt programs qt6-base-dev.")
tamarok_package(program NAME tamarok SECTION database
    DEPENDS "${tamarok_needs_library}"
    SUMMARY "lists, options and operations of a timber database"
    TEXT "The program tamarok makes databases of forestry and the timber trade,
composes and prints their lists, measures round timber, checks
installations, and calls every operation of the library Tamarok_Comm by
name.")
if(TAMAROK_WITH_WORKBENCH)
    tamarok_package(workbench NAME tamarok-workbench SECTION database
        DEPENDS "${tamarok_needs_library}"
        RECOMMENDS "qt6-translations-l10n"
        SUMMARY "lists and measured timber of a timber database in windows"
        TEXT "The desktop program over the library Tamarok_Comm: lists of every type
with charts and totals, entry of measured timber, and options, on an
embedded database or a server.")
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tamarok-comm)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_PACKAGE_CONTACT "Tamarok maintainers <maintainers@tamarok.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${tamarok_revision})
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/shared)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_POST_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/packaging/use_trigger.cmake)
include(CPack)
