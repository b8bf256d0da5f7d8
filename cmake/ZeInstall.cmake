# What `cmake --install` puts into a prefix, and the Debian package made of it (`cpack -G DEB`):
#   include/{zeAnimation,OpenSG,zeOpenSGExt,zeOpenSGUtils,zeUtils,zeQt4Ext}/*.h
#   lib/lib<name>.so.<version> with its SONAME link and development link, one per shared library
#   lib/cmake/zeAnimation/  the CMake package: config, version file, exported zeAnimation:: targets
#   lib/pkgconfig/zeAnimation.pc
#   bin/  the programs that install themselves (apps/)
include(CMakePackageConfigHelpers)

get_property(ze_libraries GLOBAL PROPERTY ZE_SHARED_LIBRARIES)
set(ze_cmake_dir ${CMAKE_INSTALL_LIBDIR}/cmake/zeAnimation)

foreach(lib ${ze_libraries})
    get_target_property(include_dir ${lib} ZE_INCLUDE_DIR)
    # A library's "internal" folder holds headers of its own implementation: never installed.
    install(DIRECTORY ${include_dir}/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h"
        PATTERN internal EXCLUDE)
endforeach()

install(TARGETS ${ze_libraries} EXPORT zeAnimationTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    INCLUDES DESTINATION ${CMAKE_INSTALL_INCLUDEDIR})
install(EXPORT zeAnimationTargets NAMESPACE zeAnimation:: DESTINATION ${ze_cmake_dir})

configure_package_config_file(${PROJECT_SOURCE_DIR}/cmake/zeAnimationConfig.cmake.in
    ${PROJECT_BINARY_DIR}/zeAnimationConfig.cmake INSTALL_DESTINATION ${ze_cmake_dir})
# A host asking for 1.x accepts any 1.y.z at or above it; 2.0 will break the interface.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zeAnimationConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/zeAnimationConfig.cmake ${PROJECT_BINARY_DIR}/zeAnimationConfigVersion.cmake
    DESTINATION ${ze_cmake_dir})

# pkg-config. Paths are relative to the .pc file itself, so the same file serves any prefix: the
# Debian package (installed under /usr by CPack), a temporary prefix, an unpacked tree. -fPIC
# because Qt's headers, which ours include, refuse position-dependent code and Qt's own .pc files
# do not say so.
set(ze_pc_dir ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR} OR IS_ABSOLUTE ${CMAKE_INSTALL_INCLUDEDIR})
    set(ZE_PC_TO_PREFIX "")
    set(ZE_PC_LIBDIR ${CMAKE_INSTALL_FULL_LIBDIR})
    set(ZE_PC_INCLUDEDIR ${CMAKE_INSTALL_FULL_INCLUDEDIR})
else()
    file(RELATIVE_PATH ZE_PC_TO_PREFIX /prefix/${ze_pc_dir} /prefix)
    string(REGEX REPLACE "/$" "" ZE_PC_TO_PREFIX "${ZE_PC_TO_PREFIX}")
    set(ZE_PC_LIBDIR "\${prefix}/${CMAKE_INSTALL_LIBDIR}")
    set(ZE_PC_INCLUDEDIR "\${prefix}/${CMAKE_INSTALL_INCLUDEDIR}")
endif()
# Dependents before their dependencies: the reverse of the order the libraries were defined in.
set(ZE_PC_LIBS)
foreach(lib ${ze_libraries})
    string(PREPEND ZE_PC_LIBS "-l${lib} ")
endforeach()
string(STRIP "${ZE_PC_LIBS}" ZE_PC_LIBS)
configure_file(${PROJECT_SOURCE_DIR}/cmake/zeAnimation.pc.in ${PROJECT_BINARY_DIR}/zeAnimation.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zeAnimation.pc DESTINATION ${ze_pc_dir})

# The Debian package: everything above in one package, under /usr.
set(CPACK_PACKAGE_NAME zeanimation)
set(CPACK_PACKAGE_CONTACT "zeAnimation maintainers <maintainers@users.noreply.c-seed-a572b8a0.example>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "animation library for OpenSG 1.x scenes")
# Debian wants the long description in lines of under 80 characters; CPack keeps them.
string(CONCAT CPACK_PACKAGE_DESCRIPTION
    "zeAnimation keeps a pool of animation objects (control points, Bezier curves,\n"
    "blocks, tracks, clips and sequences), binds curves to fields of scene-graph\n"
    "nodes, evaluates them, plays them per object or on a global timeline, and saves\n"
    "and loads the pool as XML.\n"
    "\n"
    "The package holds the shared libraries, the scene graph and host libraries they\n"
    "are built against, their headers, the CMake and pkg-config packages for\n"
    "building against them, and the zeanim command-line tool.")
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION libs)
# The runtime dependencies come from the libraries' own needs as dpkg-shlibdeps reads them; the
# list below is only for a machine without it (it names the Debian 12 packages).
find_program(ZE_DPKG_SHLIBDEPS dpkg-shlibdeps)
if(ZE_DPKG_SHLIBDEPS)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
else()
    set(CPACK_DEBIAN_PACKAGE_DEPENDS "libc6, libgcc-s1, libstdc++6, libqt5core5a, libqt5widgets5, libqt5xml5")
endif()
# Building against the headers needs Qt's and Boost's development packages too.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "qtbase5-dev, libboost-dev")
# A shlibs file, so that packages built against ours depend on it, and the ldconfig trigger.
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
include(CPack)
