# The Debian packages, one for each component of the installation:
#
#     libvmcore0        the library               vmcore-tools      the command `vmcore`
#     libvmcore-dev     headers, CMake package    vmcore-librarian  the Librarian
#
# What they depend on is read from their files; what is opened at run time is named here, by its names on
# Debian 12 and on Ubuntu 24.04. `cpack` in the build folder of the preset `package` makes them.

set(VMCORE_MAINTAINER "VMCore maintainers <maintainers@vmcore.example.org>" CACHE STRING
    "Maintainer of the packages: name and address")
cmake_host_system_information(RESULT distribution QUERY DISTRIB_ID)
cmake_host_system_information(RESULT release QUERY DISTRIB_VERSION_ID)
set(VMCORE_PACKAGE_REVISION 1~${distribution}${release}) # their dependencies have other names elsewhere

set(soname libvmcore${PROJECT_VERSION_MAJOR})
set(sameVersion "(= ${PROJECT_VERSION}-${VMCORE_PACKAGE_REVISION})")
set(sound "libasound2t64 | libasound2")
set(transfers "libcurl4t64 | libcurl4 | libcurl3t64-gnutls | libcurl3-gnutls")
set(studio "libjack-jackd2-0 | libjack-0.125")

set(about "VMCore runs programs written against the Win32 and MFC interfaces as
native programs of the desktop, on top of Qt 6.")

# component, package, section, summary, what is in it
function(vmcore_debian_package component package section summary contents)
    string(TOUPPER ${component} COMPONENT)
    set(doc ${CMAKE_INSTALL_DATADIR}/doc/${package})
    install(FILES copyright DESTINATION ${doc} COMPONENT ${component})
    vmcore_install_compressed(${CMAKE_CURRENT_BINARY_DIR}/changelog ${doc} changelog.Debian ${component})
    vmcore_install_compressed(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${doc} changelog ${component})

    set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_NAME ${package} PARENT_SCOPE)
    set(CPACK_DEBIAN_${COMPONENT}_PACKAGE_SECTION ${section} PARENT_SCOPE)
    set(CPACK_DEBIAN_${COMPONENT}_DESCRIPTION "${summary}\n${about}\n\n${contents}" PARENT_SCOPE)
    list(APPEND CPACK_COMPONENTS_ALL ${component})
    set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} PARENT_SCOPE)
endfunction()

string(TIMESTAMP now "%a, %d %b %Y %H:%M:%S +0000" UTC) # of SOURCE_DATE_EPOCH, when that is set
configure_file(changelog.in changelog @ONLY)

vmcore_debian_package(Runtime ${soname} libs "Win32 and MFC interfaces for desktop programs"
    "This package contains the shared library.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_RECOMMENDS "${sound}, ${transfers}")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SUGGESTS "${studio}, pkexec")
# The trigger runs ldconfig. CPack would write scripts that do, too, were these not listed; there are none.
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${CMAKE_CURRENT_SOURCE_DIR}/triggers
    ${CMAKE_CURRENT_SOURCE_DIR}/none/postinst ${CMAKE_CURRENT_SOURCE_DIR}/none/postrm)

vmcore_debian_package(Development libvmcore-dev libdevel
    "Win32 and MFC interfaces for desktop programs - development files"
    "This package contains the headers, the CMake package with the function
vmcore_add_application, and the pkg-config module.")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "${soname} ${sameVersion}")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS "cmake (>= 3.25), g++, pkg-config")

if(VMCORE_BUILD_TOOLS)
    vmcore_debian_package(Tools vmcore-tools devel "tools for settings, MIDI ports and interface files"
        "This package contains the command vmcore, which edits and checks ini
files, lists, uses and tests MIDI ports, and checks interface files.")
    set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS "${sound}")
    set(CPACK_DEBIAN_TOOLS_PACKAGE_SUGGESTS "${studio}")
endif()

if(VMCORE_BUILD_EXAMPLES)
    vmcore_debian_package(Librarian vmcore-librarian sound
        "librarian of MIDI System Exclusive banks"
        "This package contains the Librarian, which shows, sends, receives and
compares banks of System Exclusive messages. It is the example program of
VMCore.")
    set(CPACK_DEBIAN_LIBRARIAN_PACKAGE_DEPENDS "${soname} ${sameVersion}")
    set(CPACK_DEBIAN_LIBRARIAN_PACKAGE_RECOMMENDS "shared-mime-info, desktop-file-utils")
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "") # each package has its own
set(CPACK_PACKAGE_CONTACT "${VMCORE_MAINTAINER}")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SOURCE vmcore)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${VMCORE_PACKAGE_REVISION})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
include(CPack)
