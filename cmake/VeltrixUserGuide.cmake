# The user guide, docs/user-guide, as HTML beside the program; the window's "User Guide" link opens it there.
#   Target "user_guide". Without lowdown nothing is rendered, and the link leads to the web.
find_program(LOWDOWN_PROGRAM lowdown)
if(NOT LOWDOWN_PROGRAM)
    message(STATUS "lowdown was not found: the user guide is not rendered")
    return()
endif()

set(guide "${CMAKE_SOURCE_DIR}/docs/user-guide")
set(rendered "${CMAKE_BINARY_DIR}/user-guide")
file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${guide}/*")
add_custom_command(
    OUTPUT "${rendered}/index.html"
    COMMAND "${CMAKE_COMMAND}" "-DLOWDOWN=${LOWDOWN_PROGRAM}" "-DVERSION=${PROJECT_VERSION}"
        "-DGUIDE=${guide}" "-DRENDERED=${rendered}" -P "${CMAKE_SOURCE_DIR}/cmake/RenderUserGuide.cmake"
    DEPENDS ${sources} "${CMAKE_SOURCE_DIR}/cmake/RenderUserGuide.cmake"
    COMMENT "Rendering the user guide"
    VERBATIM)
add_custom_target(user_guide ALL DEPENDS "${rendered}/index.html")

if(BUILD_TESTING AND NOT CMAKE_CROSSCOMPILING)
    add_test(NAME user_guide
        COMMAND "${CMAKE_SOURCE_DIR}/tests/unit/tree/check-user-guide" "${CMAKE_SOURCE_DIR}" "${rendered}")
    set_tests_properties(user_guide PROPERTIES LABELS unit)
endif()
