# SQLite for Windows, compiled from its amalgamation. The amalgamation comes from a package of the npm registry, the same
# version as Debian's library, on which all tests of the embedded database run. It is fetched when the build is configured
# and lies in the build folder alone.
#
# To raise the version: a package with the same SQLite as Debian's, and its hash.

set(sqlite_package better-sqlite3-8.1.0.tgz) # SQLite 3.40.1
set(sqlite_hash 9006504eac0c86e8d5f42d6b7a8282866bf041bc856ff4438fec83cb98e4c05f)
set(sqlite_folder ${PROJECT_BINARY_DIR}/sqlite)
set(TAMAROK_SQLITE_PACKAGE "" CACHE FILEPATH "The package with SQLite's amalgamation; empty: it is fetched")

if(NOT TARGET SQLite::SQLite3)
    set(sqlite_file "${TAMAROK_SQLITE_PACKAGE}")
    if(NOT sqlite_file)
        set(sqlite_file ${sqlite_folder}/${sqlite_package})
        if(NOT EXISTS ${sqlite_file})
            file(DOWNLOAD https://registry.npmjs.org/better-sqlite3/-/${sqlite_package} ${sqlite_file}.part
                 STATUS sqlite_status TIMEOUT 300)
            list(GET sqlite_status 0 sqlite_code)
            if(NOT sqlite_code EQUAL 0)
                file(REMOVE ${sqlite_file}.part)
                message(FATAL_ERROR "SQLite's amalgamation (${sqlite_package}) cannot be fetched: ${sqlite_status}. "
                                    "A copy can be named by TAMAROK_SQLITE_PACKAGE.")
            endif()
            file(RENAME ${sqlite_file}.part ${sqlite_file})
        endif()
    endif()
    file(SHA256 ${sqlite_file} sqlite_found_hash)
    if(NOT sqlite_found_hash STREQUAL sqlite_hash)
        if(NOT TAMAROK_SQLITE_PACKAGE)
            file(REMOVE ${sqlite_file}) # the next configuration fetches it again
        endif()
        message(FATAL_ERROR "${sqlite_file} is not the expected package: its SHA-256 is ${sqlite_found_hash}.")
    endif()
    if(NOT EXISTS ${sqlite_folder}/package/deps/sqlite3/sqlite3.c)
        file(ARCHIVE_EXTRACT INPUT ${sqlite_file} DESTINATION ${sqlite_folder} PATTERNS package/deps/sqlite3/*)
    endif()

    # The options of Debian's library that the embedded database relies on; the shared memory of a log needs no other
    # process model. No loading of extensions: nothing here does so, and a database must not be able to.
    add_library(tamarok_sqlite STATIC ${sqlite_folder}/package/deps/sqlite3/sqlite3.c)
    target_compile_definitions(tamarok_sqlite PRIVATE
        SQLITE_THREADSAFE=1 SQLITE_ENABLE_COLUMN_METADATA SQLITE_ENABLE_MATH_FUNCTIONS SQLITE_OMIT_LOAD_EXTENSION
        SQLITE_MAX_VARIABLE_NUMBER=250000)
    target_compile_options(tamarok_sqlite PRIVATE -w)
    target_include_directories(tamarok_sqlite SYSTEM INTERFACE ${sqlite_folder}/package/deps/sqlite3)
    add_library(SQLite::SQLite3 ALIAS tamarok_sqlite)
endif()
set(SQLite3_FOUND TRUE)
