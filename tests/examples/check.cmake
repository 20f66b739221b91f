# What the tests of the examples share.

# run(command...): runs a command; its output is in `output` and its exit status in `status`.
macro(run)
    execute_process(COMMAND ${ARGN} OUTPUT_VARIABLE output ERROR_VARIABLE errors RESULT_VARIABLE status)
endmacro()

# expect(expected): the last command has printed exactly this and ended with status 0.
function(expect expected)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "exit status ${status}: ${errors}")
    endif()
    if(NOT output STREQUAL expected)
        message(FATAL_ERROR "expected\n${expected}\nbut printed\n${output}")
    endif()
endfunction()

# make_database(logs): a new database with that many logs in `database`.
macro(make_database logs)
    file(MAKE_DIRECTORY ${WORK})
    set(database ${WORK}/demo.db)
    run(${TAMAROK} init ${database} --logs ${logs} --seed 1 --force)
    if(NOT status EQUAL 0)
        message(FATAL_ERROR "init: ${errors}")
    endif()
endmacro()
