# Gives bouncecheck::bouncecheck_shared and bouncecheck::bouncecheck_static as far as they are
# installed, and bouncecheck::bouncecheck: the shared library, or the static one where that is
# the only one or BUILD_SHARED_LIBS is off.
include(${CMAKE_CURRENT_LIST_DIR}/bouncecheckTargets.cmake)

if(NOT TARGET bouncecheck::bouncecheck)
    if(TARGET bouncecheck::bouncecheck_static AND
        (NOT TARGET bouncecheck::bouncecheck_shared OR
            (DEFINED BUILD_SHARED_LIBS AND NOT BUILD_SHARED_LIBS)))
        add_library(bouncecheck::bouncecheck ALIAS bouncecheck::bouncecheck_static)
    else()
        add_library(bouncecheck::bouncecheck ALIAS bouncecheck::bouncecheck_shared)
    endif()
endif()
