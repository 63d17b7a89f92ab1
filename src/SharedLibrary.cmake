# The library as a shared one, of the same objects, and which of the two programs get.
add_library(bouncecheck_shared SHARED $<TARGET_OBJECTS:bouncecheck>)
target_compile_features(bouncecheck_shared INTERFACE cxx_std_20)
target_sources(bouncecheck_shared INTERFACE FILE_SET HEADERS
    BASE_DIRS ${PROJECT_SOURCE_DIR}/include ${made_headers} FILES ${public_headers})
target_link_libraries(bouncecheck_shared PRIVATE ${Iconv_LIBRARIES} $<BUILD_INTERFACE:bouncecheck_developer>)
# Of the C++ library's templates, too, nothing is visible.
set(symbols ${CMAKE_CURRENT_SOURCE_DIR}/bouncecheck.map)
target_link_options(bouncecheck_shared PRIVATE LINKER:--version-script=${symbols})
set_target_properties(bouncecheck_shared PROPERTIES
    LINKER_LANGUAGE CXX
    LINK_DEPENDS ${symbols}
    OUTPUT_NAME bouncecheck
    VERSION ${PROJECT_VERSION}
    # Before 1.0, what C++ programs use may change with any minor version.
    SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})

# Programs get the one that BUILD_SHARED_LIBS asks for. Where it says nothing, both are
# installed, as packages of distributions have them.
if(BUILD_SHARED_LIBS)
    add_library(bouncecheck::bouncecheck ALIAS bouncecheck_shared)
    set(installed_libraries bouncecheck_shared)
else()
    add_library(bouncecheck::bouncecheck ALIAS bouncecheck)
    set(installed_libraries bouncecheck)
    if(NOT DEFINED BUILD_SHARED_LIBS)
        list(APPEND installed_libraries bouncecheck_shared)
    endif()
endif()
if(NOT (BOUNCECHECK_INSTALL AND bouncecheck_shared IN_LIST installed_libraries))
    set_target_properties(bouncecheck_shared PROPERTIES EXCLUDE_FROM_ALL ON)
endif()
