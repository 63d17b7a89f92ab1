# Run by CPack when the files of each package stand in a folder: adds what Debian's policy asks
# of a package, and compresses its manual pages.
find_program(gzip gzip REQUIRED)

set(version ${CPACK_PACKAGE_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
string(TIMESTAMP now "%a, %d %b %Y %H:%M:%S +0000" UTC) # by SOURCE_DATE_EPOCH, where that is set
set(changelog "bouncecheck (${version}) unstable; urgency=medium

  * Made of the sources of this version, whose CHANGELOG.md tells what is new.

 -- ${CPACK_PACKAGE_CONTACT}  ${now}
")

foreach(component IN LISTS CPACK_COMPONENTS_ALL)
    string(TOUPPER ${component} upper)
    set(package ${CPACK_DEBIAN_${upper}_PACKAGE_NAME})
    set(usr ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/${component}/usr)
    set(documents ${usr}/share/doc/${package})
    file(MAKE_DIRECTORY ${documents})
    file(WRITE ${documents}/changelog.Debian "${changelog}")
    file(COPY ${CPACK_BOUNCECHECK_SOURCE}/CHANGELOG.md DESTINATION ${documents})
    file(RENAME ${documents}/CHANGELOG.md ${documents}/changelog)
    file(COPY ${CMAKE_CURRENT_LIST_DIR}/debian/copyright DESTINATION ${documents})

    file(GLOB pages ${usr}/share/man/man*/*)
    execute_process(COMMAND ${gzip} -9 -n ${documents}/changelog.Debian ${documents}/changelog ${pages}
        COMMAND_ERROR_IS_FATAL ANY)
endforeach()
