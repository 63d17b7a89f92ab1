# What `cpack` makes: three packages for Debian and those who take its packages. The script
# packages/deb builds and checks them.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME bouncecheck)
set(CPACK_PACKAGE_VENDOR "The BounceCheck authors")
# As Debian's own tools have it: who makes a package says so by these.
if(DEFINED ENV{DEBFULLNAME} AND DEFINED ENV{DEBEMAIL})
    set(CPACK_PACKAGE_CONTACT "$ENV{DEBFULLNAME} <$ENV{DEBEMAIL}>")
else()
    set(CPACK_PACKAGE_CONTACT "The BounceCheck authors <bouncecheck@localhost>")
endif()
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL tool runtime development)
set(CPACK_DEB_COMPONENT_INSTALL ON)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)

set(library libbouncecheck${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(CPACK_DEBIAN_TOOL_PACKAGE_NAME bouncecheck)
set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION mail)
# For packed mail; the tool loads it when it meets some.
set(CPACK_DEBIAN_TOOL_PACKAGE_RECOMMENDS "libarchive13t64 | libarchive13")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${library})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libbouncecheck-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
    "${library} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")

set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own, the first line
set(said_of_all
"BounceCheck reads a returned or automatic e-mail and says whether it is a
hard or soft bounce, a refusal, an automatic reply, a complaint, a receipt or
none of these; whom it is about, why the mail failed there and what to do;
and by which rule, step by step.

This package has")
set(CPACK_DEBIAN_TOOL_DESCRIPTION "tells what returned and automatic e-mails mean
${said_of_all} the command, which reads messages, mailboxes and folders.")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "tells what returned e-mails mean - shared library
${said_of_all} the shared library.")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "tells what returned e-mails mean - development files
${said_of_all} the headers for C++ and C, the static library, and the
files for CMake and pkg-config.")

set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_LIST_DIR}/debian/triggers)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/DebianFiles.cmake)
set(CPACK_BOUNCECHECK_SOURCE ${PROJECT_SOURCE_DIR})

include(CPack)
