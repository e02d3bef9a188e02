if(VELTRIX_PRECOMPILED_HEADERS)
    # They are of use only where the same macros hold.
    target_compile_options(veltrix_settings INTERFACE -pthread)
    target_compile_definitions(veltrix_settings INTERFACE $<$<NOT:$<CONFIG:Debug>>:QT_NO_DEBUG>)
endif()

# What most files include. Not the modules' headers that include everything: what their inline functions take from
# templates is made anew in every file at its end, and of an empty file that was nine tenths (decision 81).
set(VELTRIX_COMMON_HEADERS
    <algorithm> <array> <functional> <memory> <optional> <string> <utility> <vector>
    <QByteArray> <QCoreApplication> <QDateTime> <QDir> <QFile> <QFileInfo> <QMetaObject> <QObject> <QPoint> <QRect> <QSize>
    <QString> <QStringList> <QTimer> <QUrl> <QVariant> <QVector>
    <QApplication> <QKeyEvent> <QLabel> <QPainter> <QWidget>)

# veltrix_precompile(TARGET [OPTIONS...])
#   The headers that most files include, compiled once for all targets that are compiled with the same OPTIONS besides
#   the common ones. A target that lacks an include builds with them all the same, so the ordinary builds do without.
function(veltrix_precompile target)
    if(NOT VELTRIX_PRECOMPILED_HEADERS)
        return()
    endif()
    string(MAKE_C_IDENTIFIER "veltrix_precompiled${ARGN}" headers)
    if(NOT TARGET ${headers})
        file(CONFIGURE OUTPUT "${CMAKE_BINARY_DIR}/precompiled.cpp" CONTENT "")
        add_library(${headers} STATIC "${CMAKE_BINARY_DIR}/precompiled.cpp")
        set_target_properties(${headers} PROPERTIES AUTOMOC OFF)
        target_compile_options(${headers} PRIVATE ${ARGN})
        # Not linked: the modules' definitions differ from target to target, and a header compiled with one of them would
        # be of use to few.
        target_link_libraries(${headers} PRIVATE veltrix_settings)
        target_include_directories(${headers} SYSTEM PRIVATE
            $<TARGET_PROPERTY:Qt5::Core,INTERFACE_INCLUDE_DIRECTORIES>
            $<TARGET_PROPERTY:Qt5::Gui,INTERFACE_INCLUDE_DIRECTORIES>
            $<TARGET_PROPERTY:Qt5::Widgets,INTERFACE_INCLUDE_DIRECTORIES>)
        target_precompile_headers(${headers} PRIVATE ${VELTRIX_COMMON_HEADERS})
    endif()
    target_precompile_headers(${target} REUSE_FROM ${headers})
endfunction()

# veltrix_add_library(NAME SOURCES... LINK libraries...)
#   One static library per folder. NAME is the folder's name; the target is veltrix_NAME.
function(veltrix_add_library name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINK" ${ARGN})
    add_library(veltrix_${name} STATIC ${ARG_SOURCES})
    target_link_libraries(veltrix_${name} PUBLIC veltrix_settings ${ARG_LINK})
    veltrix_precompile(veltrix_${name})
endfunction()

# Sanitizers and coverage watch the program, not its tests: those would take half of the build's time.
set(VELTRIX_TEST_OPTIONS)
if(VELTRIX_COVERAGE)
    set(VELTRIX_TEST_OPTIONS -fno-profile-arcs -fno-test-coverage)
endif()
if(VELTRIX_SANITIZERS)
    set(VELTRIX_TEST_OPTIONS -fno-sanitize=all -O0)
endif()
# For what a test expects of time and memory: its own compiler does not tell.
if(VELTRIX_SANITIZERS MATCHES address)
    list(APPEND VELTRIX_TEST_OPTIONS -DVELTRIX_ADDRESS_SANITIZER)
endif()

# What tests find the tree under when they run. Under Wine the system's folders are a drive of their own.
set(VELTRIX_SOURCE_AT_RUN "${CMAKE_SOURCE_DIR}")
set(VELTRIX_BINARY_AT_RUN "${CMAKE_BINARY_DIR}")
if(CMAKE_CROSSCOMPILING AND WIN32)
    string(PREPEND VELTRIX_SOURCE_AT_RUN "Z:")
    string(PREPEND VELTRIX_BINARY_AT_RUN "Z:")
endif()

# What every test needs, those that are not Qt Test programs too.
set(VELTRIX_TEST_ENVIRONMENT)
if(VELTRIX_SANITIZERS)
    set(VELTRIX_TEST_ENVIRONMENT
        "LSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/cmake/leaks.supp:print_suppressions=0"
        "TSAN_OPTIONS=suppressions=${CMAKE_SOURCE_DIR}/cmake/threads.supp:print_suppressions=0")
endif()

# What a test with a JACK server is started by, so that such tests need not take turns.
set(VELTRIX_OWN_MEMORY "${CMAKE_SOURCE_DIR}/scripts/desk.d/own-memory")

# veltrix_add_test(NAME SOURCES... LINK libraries... [LABEL unit|platform|e2e] [SERVERS] [JACK] [TIMEOUT seconds]
#                  [DEFINITIONS NAME=VALUE...] [ENVIRONMENT NAME=VALUE...])
#   A Qt Test class with its main function, in NAME.cpp, registered with CTest. The tests of a folder are one program,
#   named after the folder; each runs as a process of its own ("PROGRAM NAME" runs it by hand) and keeps its main
#   function, which is called run_NAME (tests/support/main/Main.h). The target NAME builds what the test needs,
#   tests_LABEL what all need that have the label. Unit tests run without a display: they get the offscreen platform.
#   SERVERS is for tests that start real servers (X, JACK, a web server, Wine); they have that label too, and those
#   alone may be run once more after a failure, because a machine that is busy with something else can keep such a
#   server waiting. JACK is for those among them that start a JACK server.
function(veltrix_add_test name)
    cmake_parse_arguments(ARG "SERVERS;JACK" "LABEL;TIMEOUT" "SOURCES;LINK;DEFINITIONS;ENVIRONMENT" ${ARGN})
    if(NOT ARG_LABEL)
        set(ARG_LABEL unit)
    endif()
    if(NOT ARG_TIMEOUT)
        set(ARG_TIMEOUT 120)
    endif()
    math(EXPR ARG_TIMEOUT "${VELTRIX_TEST_PATIENCE} * ${ARG_TIMEOUT}")
    cmake_path(RELATIVE_PATH CMAKE_CURRENT_SOURCE_DIR BASE_DIRECTORY "${CMAKE_SOURCE_DIR}/tests" OUTPUT_VARIABLE program)
    string(REPLACE "/" "_" program "${program}")
    if(NOT TARGET ${program})
        set(list "${CMAKE_CURRENT_BINARY_DIR}/${program}.tests")
        file(GENERATE OUTPUT "${list}" CONTENT "TEST($<JOIN:$<TARGET_PROPERTY:${program},VELTRIX_TESTS>,)\nTEST(>)\n")
        add_executable(${program} "${CMAKE_SOURCE_DIR}/tests/support/main/main.cpp")
        set_property(SOURCE "${CMAKE_SOURCE_DIR}/tests/support/main/main.cpp"
            PROPERTY COMPILE_DEFINITIONS "VELTRIX_TESTS=\"${list}\"")
        set_property(SOURCE "${CMAKE_SOURCE_DIR}/tests/support/main/main.cpp" PROPERTY OBJECT_DEPENDS "${list}")
        set_target_properties(${program} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
        target_link_libraries(${program} PRIVATE veltrix_settings Qt5::Test)
        target_compile_definitions(${program} PRIVATE VELTRIX_TEST_DATA="${VELTRIX_SOURCE_AT_RUN}/tests/data")
        target_compile_options(${program} PRIVATE ${VELTRIX_TEST_OPTIONS})
        veltrix_precompile(${program} ${VELTRIX_TEST_OPTIONS})
    endif()
    set_property(TARGET ${program} APPEND PROPERTY VELTRIX_TESTS ${name})
    target_sources(${program} PRIVATE ${ARG_SOURCES})
    target_link_libraries(${program} PRIVATE ${ARG_LINK})
    set_property(SOURCE ${name}.cpp APPEND PROPERTY COMPILE_DEFINITIONS VELTRIX_TEST_MAIN=run_${name})
    set_property(SOURCE ${ARG_SOURCES} APPEND PROPERTY COMPILE_DEFINITIONS ${ARG_DEFINITIONS})

    add_custom_target(${name})
    add_dependencies(${name} ${program})
    if(NOT TARGET tests_${ARG_LABEL})
        add_custom_target(tests_${ARG_LABEL})
    endif()
    add_dependencies(tests_${ARG_LABEL} ${name})

    set(command ${program})
    if(ARG_JACK)
        set(command "${VELTRIX_OWN_MEMORY}" $<TARGET_FILE:${program}>)
    endif()
    add_test(NAME ${name} COMMAND ${command} ${name})
    set(environment ${ARG_ENVIRONMENT})
    set(labels ${ARG_LABEL})
    if(ARG_SERVERS)
        list(APPEND labels servers)
    endif()
    if(ARG_LABEL STREQUAL "unit")
        list(APPEND environment "QT_QPA_PLATFORM=offscreen" "DISPLAY=" "QT_FATAL_WARNINGS=0")
    endif()
    list(APPEND environment ${VELTRIX_TEST_ENVIRONMENT})
    set_tests_properties(${name} PROPERTIES
        LABELS "${labels}" TIMEOUT ${ARG_TIMEOUT} COST ${ARG_TIMEOUT} ENVIRONMENT "${environment}") # the long ones first
endfunction()

# veltrix_add_test_at_scale(NAME SCALE): NAME_SCALEx is the same test on a screen with that many times the pixels.
# veltrix_add_test_at_scale_2(NAME): on one with twice as many.
function(veltrix_add_test_at_scale name scale)
    get_test_property(${name} ENVIRONMENT environment)
    get_test_property(${name} LABELS labels)
    get_test_property(${name} TIMEOUT timeout)
    get_property(program TARGET ${name} PROPERTY MANUALLY_ADDED_DEPENDENCIES)
    list(GET program 0 program)
    add_test(NAME ${name}_${scale}x COMMAND ${program} ${name})
    set_tests_properties(${name}_${scale}x PROPERTIES
        LABELS "${labels}" TIMEOUT ${timeout} COST ${timeout} ENVIRONMENT "${environment};QT_SCALE_FACTOR=${scale}")
endfunction()

function(veltrix_add_test_at_scale_2 name)
    veltrix_add_test_at_scale(${name} 2)
endfunction()
