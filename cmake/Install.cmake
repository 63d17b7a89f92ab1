# What `cmake --install` installs: the tool with its manual pages and what shells complete it by,
# and for other programs the library with its public headers, by find_package(bouncecheck) and by
# pkg-config. Components are what distributions make a package each of: tool, runtime (the shared
# library) and development.
include(CMakePackageConfigHelpers)
include(GNUInstallDirs)

if(BOUNCECHECK_TOOL)
    install(TARGETS bouncecheck_main COMPONENT tool)
    file(GLOB manual_pages CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/docs/man/*.1)
    install(FILES ${PROJECT_SOURCE_DIR}/docs/bouncecheck.1 ${manual_pages}
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT tool)
    set(completions ${PROJECT_SOURCE_DIR}/docs/completions)
    install(FILES ${completions}/bouncecheck.bash
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions RENAME bouncecheck
        COMPONENT tool)
    install(FILES ${completions}/_bouncecheck
        DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions COMPONENT tool)
    install(FILES ${completions}/bouncecheck.fish
        DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d COMPONENT tool)
endif()

# What a C compiler has to be told to link the static library.
if(CMAKE_CXX_FLAGS MATCHES "-stdlib=libc[+][+]")
    set(private_libraries -lc++)
else()
    set(private_libraries "-lstdc++ -lm")
endif()

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/bouncecheck)
install(TARGETS ${installed_libraries} EXPORT bouncecheck_targets
    LIBRARY COMPONENT runtime NAMELINK_COMPONENT development
    ARCHIVE COMPONENT development
    FILE_SET HEADERS COMPONENT development)
install(EXPORT bouncecheck_targets
    FILE bouncecheckTargets.cmake
    NAMESPACE bouncecheck::
    DESTINATION ${package_folder}
    COMPONENT development)
# Before 1.0, what a program is built against can change with any minor version.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/bouncecheckConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
configure_file(${CMAKE_CURRENT_LIST_DIR}/bouncecheckConfig.cmake.in
    ${PROJECT_BINARY_DIR}/bouncecheckConfig.cmake @ONLY)
install(FILES
        ${PROJECT_BINARY_DIR}/bouncecheckConfig.cmake
        ${PROJECT_BINARY_DIR}/bouncecheckConfigVersion.cmake
    DESTINATION ${package_folder}
    COMPONENT development)

# Found from the file's own place, since the prefix may be chosen when it is installed; folders
# that were given as whole paths stay where they are.
set(pkgconfig_folder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
    set(pkgconfig_prefix ${CMAKE_INSTALL_PREFIX})
else()
    file(RELATIVE_PATH prefix_from_pkgconfig /prefix/${pkgconfig_folder} /prefix)
    string(REGEX REPLACE "/$" "" pkgconfig_prefix "\${pcfiledir}/${prefix_from_pkgconfig}")
endif()
foreach(folder IN ITEMS LIBDIR INCLUDEDIR)
    cmake_path(APPEND pkgconfig_${folder} "\${prefix}" ${CMAKE_INSTALL_${folder}})
endforeach()
configure_file(${CMAKE_CURRENT_LIST_DIR}/bouncecheck.pc.in
    ${PROJECT_BINARY_DIR}/bouncecheck.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/bouncecheck.pc
    DESTINATION ${pkgconfig_folder} COMPONENT development)
