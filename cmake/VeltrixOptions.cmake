# Options and settings that hold for every target of the tree.
include(CTest)

option(VELTRIX_WARNINGS_AS_ERRORS "Treat compiler warnings as errors" OFF)
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    option(VELTRIX_UINPUT "Send keys through the kernel in Wayland sessions (needs libevdev and libwayland)" ON)
endif()
option(VELTRIX_FUZZERS "Build the libFuzzer targets (needs clang)" OFF)
option(VELTRIX_PRECOMPILED_HEADERS "Compile the toolkit's headers once for all targets, for builds that are only tested" OFF)
option(VELTRIX_COVERAGE "Instrument for gcov" OFF)
option(VELTRIX_SERIAL_PORT "Reach devices at serial ports; off: virtual devices only, a build for testing" ON)
set(VELTRIX_TEST_PATIENCE "1" CACHE STRING "How many times as long a test may take, where something watches it")
set(VELTRIX_SANITIZERS "" CACHE STRING "Value of -fsanitize=, for example address,undefined")

set(VELTRIX_API_URL "http://api.veltrix.invalid/api/" CACHE STRING "Address of the web service, ending in /api/")
set(VELTRIX_UPDATES "install" CACHE STRING "What is done with a newer version: \"install\" it or only \"tell\" of it")
if(NOT VELTRIX_UPDATES MATCHES "^(install|tell)$")
    message(FATAL_ERROR "VELTRIX_UPDATES is neither install nor tell: ${VELTRIX_UPDATES}")
endif()
set(VELTRIX_SIGNING_KEY "" CACHE STRING
    "Ed25519 public key in base64 (deploy/make-key shows it): only installers and libraries signed with it are used")
if(VELTRIX_SIGNING_KEY)
    string(LENGTH "${VELTRIX_SIGNING_KEY}" key_length)
    if(NOT key_length EQUAL 44 OR NOT VELTRIX_SIGNING_KEY MATCHES "^[A-Za-z0-9+/]+=$")
        message(FATAL_ERROR "VELTRIX_SIGNING_KEY is not 32 bytes in base64: ${VELTRIX_SIGNING_KEY}")
    endif()
endif()

set(CMAKE_CXX_STANDARD 17)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_C_STANDARD 11)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_AUTOMOC ON)
set(CMAKE_AUTORCC ON)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    set(CMAKE_CXX_COMPILER_LAUNCHER "${CCACHE_PROGRAM}")
endif()

# Programs and what they need at run time stand together, in the build folder as in a package.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}")

add_library(veltrix_settings INTERFACE)
target_include_directories(veltrix_settings INTERFACE "${CMAKE_SOURCE_DIR}")
target_compile_definitions(veltrix_settings INTERFACE
    QT_NO_CAST_FROM_ASCII
    QT_NO_KEYWORDS
    QT_NO_NARROWING_CONVERSIONS_IN_CONNECT
    QT_DISABLE_DEPRECATED_BEFORE=0x050F00)

if(WIN32)
    target_compile_definitions(veltrix_settings INTERFACE
        UNICODE _UNICODE NOMINMAX WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0601)
endif()

if(MSVC)
    target_compile_options(veltrix_settings INTERFACE /W4 /utf-8)
else()
    target_compile_options(veltrix_settings INTERFACE
        -Wall -Wextra -Wpedantic -Wconversion -Wshadow
        $<$<COMPILE_LANGUAGE:CXX>:-Wnon-virtual-dtor -Woverloaded-virtual>
        # Qt's logging macros
        $<$<COMPILE_LANG_AND_ID:CXX,Clang>:-Wno-gnu-zero-variadic-macro-arguments>)
    if(VELTRIX_WARNINGS_AS_ERRORS)
        target_compile_options(veltrix_settings INTERFACE -Werror)
    endif()
endif()

# What is packaged: the same bytes from every folder, and hardened as a distribution's own programs are.
if(NOT MSVC)
    add_compile_options("$<$<CONFIG:Release>:-ffile-prefix-map=${CMAKE_SOURCE_DIR}=.>")
endif()
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    include(CheckPIESupported)
    check_pie_supported()
    set(CMAKE_POSITION_INDEPENDENT_CODE ON)
    add_compile_options("$<$<CONFIG:Release>:-fstack-protector-strong;-fstack-clash-protection;-D_FORTIFY_SOURCE=2>")
    add_link_options("$<$<CONFIG:Release>:LINKER:-z,relro,-z,now>")
endif()

# While developing, quick linking counts; what is packaged is linked by the system's own linker.
find_program(MOLD_PROGRAM mold)
if(MOLD_PROGRAM AND CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT CMAKE_BUILD_TYPE STREQUAL "Release")
    add_link_options(-fuse-ld=mold)
endif()

if(VELTRIX_SANITIZERS)
    add_compile_options(-fsanitize=${VELTRIX_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${VELTRIX_SANITIZERS})
endif()
if(VELTRIX_FUZZERS)
    # Every library tells the fuzzers which of its branches an input has reached.
    add_compile_options(-fsanitize=fuzzer-no-link)
    add_link_options(-fsanitize=fuzzer-no-link)
endif()
if(VELTRIX_COVERAGE)
    add_library(veltrix_coverage_exit STATIC "${CMAKE_SOURCE_DIR}/tests/support/coverage/exit.c")
    link_libraries(veltrix_coverage_exit)
    add_compile_options(--coverage)
    add_link_options(--coverage -Wl,--wrap=_exit -Wl,--wrap=_Exit)
endif()
