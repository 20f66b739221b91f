cmake_minimum_required(VERSION 3.25)

# Checks the arrows between the rooms of the core: cmake -DROOT=... -DSTAMP=... -P check_layers.cmake
#
# The private and shared headers of a room are hidden by include paths. The public headers lie in one folder for
# the sake of their users, so the build checks here that a room, and each public header, includes public headers
# of its own floor and of floors below alone. Every public header stands in the drawing exactly once.

# The floors from the ground up: "rooms | public headers". Rooms of one floor meet through their public headers.
set(floors
    "runtime | collection column_texts convert date date_order decimal_digits early_date english_dates error files format loc_service members object object_path pivot_years platform powers_of_ten regional spelling string_array text variant windows_1252"
    "ado dialect session | ado ado_backend backend_registry c_version connection_text mcomm tmkvar transaction"
    "values | comm_conv comm_find comm_get comm_set"
    "catalogue selections settings rights timber lists | comm_act comm_csel comm_lock comm_models comm_sql list_catalogue round_wood selection_book"
    "controls | controls form grids list_view tree_view"
    "dialogs | comm_forms dialog_window dialog_windows grid_help lookup_window scripted_windows"
    "component | component")

set(problems "")
set(known "")
set(visible "")

# Reports each public header that a file includes and that is not visible on its floor.
function(check_file file)
    file(STRINGS ${ROOT}/${file} lines REGEX "^#include [\"<]tamarok/")
    foreach(line ${lines})
        string(REGEX REPLACE "^#include [\"<]tamarok/([a-z0-9_]+)\\.h[\">].*" "\\1" header "${line}")
        if(NOT header IN_LIST visible)
            set(problems ${problems} "${file} includes tamarok/${header}.h, which lies on a higher floor")
        endif()
    endforeach()
    set(problems "${problems}" PARENT_SCOPE)
endfunction()

foreach(floor ${floors})
    string(REGEX MATCH "^(.*) \\| (.*)$" matched "${floor}")
    string(REPLACE " " ";" rooms "${CMAKE_MATCH_1}")
    string(REPLACE " " ";" headers "${CMAKE_MATCH_2}")
    list(APPEND visible ${headers})
    foreach(header ${headers})
        if(header IN_LIST known)
            list(APPEND problems "tamarok/${header}.h stands on two floors")
        endif()
        list(APPEND known ${header})
        if(EXISTS ${ROOT}/include/tamarok/${header}.h)
            check_file(include/tamarok/${header}.h)
        else()
            list(APPEND problems "tamarok/${header}.h stands in the drawing, but not in the tree")
        endif()
    endforeach()
    foreach(room ${rooms})
        file(GLOB_RECURSE files RELATIVE ${ROOT} ${ROOT}/src/${room}/*.h ${ROOT}/src/${room}/*.cpp)
        foreach(file ${files})
            check_file(${file})
        endforeach()
    endforeach()
endforeach()

file(GLOB headers RELATIVE ${ROOT}/include/tamarok ${ROOT}/include/tamarok/*.h)
foreach(header ${headers})
    string(REPLACE ".h" "" header ${header})
    if(NOT header IN_LIST known)
        list(APPEND problems "tamarok/${header}.h stands on no floor: add it to cmake/check_layers.cmake")
    endif()
    # Its declarations are visible in the shared library, what it includes is not.
    file(STRINGS ${ROOT}/include/tamarok/${header}.h marks REGEX "^#(include|pragma GCC visibility)")
    list(JOIN marks "\n" marks)
    if(NOT marks MATCHES "^(#include [^\n]*\n)*#pragma GCC visibility push\\(default\\)\n#pragma GCC visibility pop$")
        list(APPEND problems
            "tamarok/${header}.h does not stand between #pragma GCC visibility push(default), behind its includes, and pop")
    endif()
endforeach()

if(problems)
    list(JOIN problems "\n  " text)
    message(FATAL_ERROR "Arrows against the drawing:\n  ${text}")
endif()
file(TOUCH ${STAMP})
