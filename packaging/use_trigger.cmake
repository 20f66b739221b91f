# Run by CPack when the packages are made. CPack lets a package of shared libraries call ldconfig from scripts of its own;
# Debian wants the trigger of the C library instead.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
    set(folder ${CPACK_TEMPORARY_DIRECTORY}/repacked)
    file(REMOVE_RECURSE ${folder})
    execute_process(COMMAND dpkg-deb --raw-extract ${package} ${folder} COMMAND_ERROR_IS_FATAL ANY)
    if(NOT EXISTS ${folder}/DEBIAN/shlibs)
        continue()
    endif()
    file(REMOVE ${folder}/DEBIAN/postinst ${folder}/DEBIAN/postrm)
    file(WRITE ${folder}/DEBIAN/triggers "activate-noawait ldconfig\n")
    execute_process(COMMAND dpkg-deb --root-owner-group -Zxz --build ${folder} ${package} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
