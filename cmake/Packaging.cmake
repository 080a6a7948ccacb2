# What an installed library is found by, and the packages that cpack makes: see tools/make_packages.sh.
include(CMakePackageConfigHelpers)

set(package_folder ${CMAKE_INSTALL_LIBDIR}/cmake/PLXUtils)
configure_package_config_file(cmake/PLXUtilsConfig.cmake.in ${PROJECT_BINARY_DIR}/PLXUtilsConfig.cmake
                              INSTALL_DESTINATION ${package_folder})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/PLXUtilsConfigVersion.cmake
                                 COMPATIBILITY SameMinorVersion)
install(EXPORT PLXUtilsTargets NAMESPACE PLXUtils:: DESTINATION ${package_folder} COMPONENT development)
install(FILES ${PROJECT_BINARY_DIR}/PLXUtilsConfig.cmake ${PROJECT_BINARY_DIR}/PLXUtilsConfigVersion.cmake
        DESTINATION ${package_folder} COMPONENT development)

# The prefix is told relative to the file, so that an installed tree may move; that needs relative folders.
if(NOT IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}" AND NOT IS_ABSOLUTE "${CMAKE_INSTALL_INCLUDEDIR}")
    file(RELATIVE_PATH pc_prefix /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
    string(REGEX REPLACE "/$" "" pc_prefix "${pc_prefix}")
    configure_file(cmake/plxutils.pc.in ${PROJECT_BINARY_DIR}/plxutils.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/plxutils.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
            COMPONENT development)
endif()

set(PLX_PACKAGE_CONTACT "PLXUtils developers <plxutils@localhost>" CACHE STRING "Maintainer of the packages")
set(CPACK_PACKAGE_NAME plxutils)
set(CPACK_PACKAGE_VENDOR PLX)
set(CPACK_PACKAGE_CONTACT "${PLX_PACKAGE_CONTACT}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "conversion of groundwater models and GMS projects into PLX files")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_STRIP_FILES ON)
set(CPACK_COMPONENTS_ALL runtime development)
if(PLX_BUILD_TOOL)
    list(APPEND CPACK_COMPONENTS_ALL tool)
endif()

if(WIN32)
    # One archive with everything in it: the library and the tool that needs it share the folder bin.
    set(CPACK_GENERATOR ZIP)
    set(CPACK_PACKAGE_FILE_NAME plxutils-${PROJECT_VERSION}-windows-x86_64)
else()
    set(CPACK_GENERATOR DEB)
    set(CPACK_DEB_COMPONENT_INSTALL ON)
    set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
    set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/DebianFiles.cmake)
    set(CPACK_PLX_SOURCE_FOLDER ${PROJECT_SOURCE_DIR})
    set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
    set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)
    set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
    set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

    set(same_version "libplxutils${PROJECT_VERSION_MAJOR} (= ${PROJECT_VERSION})")
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libplxutils${PROJECT_VERSION_MAJOR})
    set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
    set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "This package holds the library.")
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libplxutils-dev)
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
    set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${same_version}")
    set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION
"This package holds the headers for C and C++, and the files by which CMake
and pkg-config find the library.")
    set(CPACK_DEBIAN_TOOL_PACKAGE_NAME plxconvert)
    set(CPACK_DEBIAN_TOOL_PACKAGE_SECTION science)
    set(CPACK_DEBIAN_TOOL_PACKAGE_DEPENDS "${same_version}")
    set(CPACK_DEBIAN_TOOL_DESCRIPTION
"This package holds plxconvert, which turns MODFLOW models and GMS projects
into PLX files, interpolates samples and places images by control points.")
endif()
include(CPack)
