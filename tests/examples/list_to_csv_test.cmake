# The example prints the rows that `tamarok list` prints for the same columns, below a header of its own.
include(${CMAKE_CURRENT_LIST_DIR}/check.cmake)
make_database(50)

run(${TAMAROK} list LOG 1 22 32 36 280 --format csv --db ${database})
if(NOT status EQUAL 0)
    message(FATAL_ERROR "list: ${errors}")
endif()
string(FIND "${output}" "\n" end)
string(SUBSTRING "${output}" ${end} -1 rows)
string(REGEX MATCHALL "\n" line_ends "${rows}")
list(LENGTH line_ends count)
if(NOT count EQUAL 51)
    message(FATAL_ERROR "50 rows are needed, not ${count} line ends:\n${rows}")
endif()

run(${LIST_TO_CSV} ${database} LOG 1 22 32 36 280)
expect("LOG 1,LOG 22,LOG 32,LOG 36,LOG 280${rows}")

run(${LIST_TO_CSV} ${database} LOG 485)
if(NOT status EQUAL 1 OR NOT errors STREQUAL "list_to_csv: LOG has no column 485\n")
    message(FATAL_ERROR "an unknown column: status ${status}, ${errors}")
endif()
