function(run)
    execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE output ERROR_VARIABLE output)
    if(NOT status EQUAL 0)
        list(JOIN ARGN " " command)
        message(FATAL_ERROR "${command}\nended with ${status}:\n${output}")
    endif()
    set(output "${output}" PARENT_SCOPE)
endfunction()

function(expect_version program)
    run(${program} ${WORK}/consumer.db)
    if(NOT output MATCHES "Tamarok_Comm 2\\.0: 3 logs, Fichte")
        message(FATAL_ERROR "${program} printed: ${output}")
    endif()
    file(REMOVE ${WORK}/consumer.db ${WORK}/consumer.db-wal ${WORK}/consumer.db-shm ${WORK}/consumer.db-locks)
endfunction()

set(flags "")
if(SANITIZE)
    set(flags "-fsanitize=address,undefined")
endif()

file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
run(${CMAKE_COMMAND} --install ${BINARY} --prefix ${WORK}/prefix)

run(${CMAKE_COMMAND} -S ${SOURCE} -B ${WORK}/build -G ${GENERATOR} -DCMAKE_PREFIX_PATH=${WORK}/prefix
    -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${flags})
run(${CMAKE_COMMAND} --build ${WORK}/build)
expect_version(${WORK}/build/consumer)

if(QT_SOURCE)
    run(${CMAKE_COMMAND} -S ${QT_SOURCE} -B ${WORK}/qt-build -G ${GENERATOR} -DCMAKE_PREFIX_PATH=${WORK}/prefix
        -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${flags})
    run(${CMAKE_COMMAND} --build ${WORK}/qt-build)
    run(${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen
        ${WORK}/qt-build/qt_consumer ${WORK}/qt.db --act)
    if(NOT output MATCHES "[1-9][0-9]* dogs, project 1002 Borken.*, amount 7,5")
        message(FATAL_ERROR "qt_consumer printed: ${output}")
    endif()
endif()

find_program(PKG_CONFIG pkg-config REQUIRED)
set(ENV{PKG_CONFIG_PATH} ${WORK}/prefix/${LIBDIR}/pkgconfig)
run(${PKG_CONFIG} --cflags --libs tamarok_embedded tamarok_comm)
separate_arguments(package_flags UNIX_COMMAND "${output}")
run(${COMPILER} ${SOURCE}/main.cpp ${flags} -o ${WORK}/by-pkg-config ${package_flags})
expect_version(${WORK}/by-pkg-config)
