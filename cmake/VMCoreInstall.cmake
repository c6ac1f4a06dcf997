# What is installed, and how other projects find it: the shared library, the headers below
# <prefix>/include/VMCore, the CMake package (target VMCore::VMCore, vmcore_add_application) and the
# pkg-config module "vmcore". Hosts need nothing of the toolkit's development files. The build folder is such a
# package, too: CMAKE_PREFIX_PATH may name it.

include(CMakePackageConfigHelpers)

set(VMCORE_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/VMCore)

install(TARGETS VMCore EXPORT VMCoreTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime
            NAMELINK_COMPONENT Development)
install(DIRECTORY include/ DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/VMCore COMPONENT Development)

install(EXPORT VMCoreTargets NAMESPACE VMCore:: DESTINATION ${VMCORE_CMAKE_DIR}
        COMPONENT Development)
configure_package_config_file(cmake/VMCoreConfig.cmake.in
    ${CMAKE_CURRENT_BINARY_DIR}/installed/VMCoreConfig.cmake INSTALL_DESTINATION ${VMCORE_CMAKE_DIR}
    PATH_VARS CMAKE_INSTALL_BINDIR)
# Below 1.0 every minor version may change the binary interface.
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/VMCoreConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES
    ${CMAKE_CURRENT_BINARY_DIR}/installed/VMCoreConfig.cmake
    ${CMAKE_CURRENT_BINARY_DIR}/VMCoreConfigVersion.cmake
    cmake/VMCoreApplication.cmake
    cmake/VMCoreInfoPlist.cmake
    cmake/VMCoreResourceScript.cmake
    cmake/Info.plist.in
    DESTINATION ${VMCORE_CMAKE_DIR} COMPONENT Development)

export(EXPORT VMCoreTargets NAMESPACE VMCore::)
file(CONFIGURE OUTPUT ${CMAKE_CURRENT_BINARY_DIR}/VMCoreConfig.cmake CONTENT [[
include(${CMAKE_CURRENT_LIST_DIR}/VMCoreTargets.cmake)
set(VMCORE_TOOL_FOLDER @CMAKE_CURRENT_BINARY_DIR@/tools/vmcore)
include(@CMAKE_CURRENT_SOURCE_DIR@/cmake/VMCoreApplication.cmake)
]] @ONLY)

file(RELATIVE_PATH VMCORE_PREFIX_FROM_PC /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(cmake/vmcore.pc.in ${CMAKE_CURRENT_BINARY_DIR}/vmcore.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/vmcore.pc
        DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)
