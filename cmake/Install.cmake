# What `cmake --install` installs: the tool with its manual page, and for other programs the
# library with its public headers, by find_package(bouncecheck) and by pkg-config.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

if(BOUNCECHECK_TOOL)
    install(TARGETS bouncecheck_main)
    install(FILES ${PROJECT_SOURCE_DIR}/docs/bouncecheck.1
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endif()

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/bouncecheck)
install(TARGETS ${installed_libraries} EXPORT bouncecheck_targets FILE_SET HEADERS)
install(EXPORT bouncecheck_targets
    FILE bouncecheckTargets.cmake
    NAMESPACE bouncecheck::
    DESTINATION ${package_folder})
install(FILES ${CMAKE_CURRENT_LIST_DIR}/bouncecheckConfig.cmake DESTINATION ${package_folder})
# Before 1.0, what a program is built against can change with any minor version.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/bouncecheckConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/bouncecheckConfigVersion.cmake
    DESTINATION ${package_folder})

# By its own place, since the prefix may be chosen when it is installed.
set(pkgconfig_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
file(RELATIVE_PATH prefix_from_pkgconfig /prefix/${pkgconfig_folder} /prefix)
# What a C compiler has to be told to link with the static library.
if(CMAKE_CXX_FLAGS MATCHES "-stdlib=libc[+][+]")
    set(private_libraries -lc++)
else()
    set(private_libraries "-lstdc++ -lm")
endif()
configure_file(${CMAKE_CURRENT_LIST_DIR}/bouncecheck.pc.in
    ${PROJECT_BINARY_DIR}/bouncecheck.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/bouncecheck.pc DESTINATION ${pkgconfig_folder})
