# Compiler settings shared by every target of the project.

# ze_target_defaults(<target>): warnings on, nothing else.
function(ze_target_defaults target)
    target_compile_options(${target} PRIVATE -Wall -Wextra)
endfunction()

# ze_shared_library(<target> INCLUDE_DIR <dir>): what every shared library of the project has in
# common. Hosts name it zeAnimation::<target> whether they add the project as a subdirectory or
# find it installed; its file carries the project version and its SONAME the major version; once
# installed it finds its sibling libraries next to itself; <dir> holds its public headers (under
# their own subdirectory, e.g. <dir>/zeUtils/zeMessage.h) and is installed as the include root.
function(ze_shared_library target)
    cmake_parse_arguments(L "" "INCLUDE_DIR" "" ${ARGN})
    add_library(zeAnimation::${target} ALIAS ${target})
    target_include_directories(${target} PUBLIC $<BUILD_INTERFACE:${L_INCLUDE_DIR}>)
    target_compile_features(${target} PUBLIC cxx_std_17)
    set_target_properties(${target} PROPERTIES
        VERSION ${PROJECT_VERSION}
        SOVERSION ${PROJECT_VERSION_MAJOR}
        INSTALL_RPATH "$ORIGIN"
        ZE_INCLUDE_DIR ${L_INCLUDE_DIR})
    set_property(GLOBAL APPEND PROPERTY ZE_SHARED_LIBRARIES ${target})
    ze_target_defaults(${target})
endfunction()

if(ZE_SANITIZE)
    # Directory-scoped on purpose: a host that adds us with add_subdirectory keeps its own flags.
    # float-cast-overflow is not part of "undefined" but is undefined behaviour all the same: a
    # NaN or huge float converted to an integer.
    add_compile_options(-fsanitize=address,undefined,float-cast-overflow
                        -fno-sanitize-recover=undefined,float-cast-overflow -fno-omit-frame-pointer)
    add_link_options(-fsanitize=address,undefined,float-cast-overflow)
endif()

if(ZE_BUILD_FUZZERS)
    if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "Clang")
        message(FATAL_ERROR "ZE_BUILD_FUZZERS needs clang: configure with CXX=clang++")
    endif()
    # Everything is instrumented for coverage; only the fuzz targets link libFuzzer's main.
    add_compile_options(-fsanitize=fuzzer-no-link)
endif()
