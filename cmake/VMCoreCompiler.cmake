# Build type, warnings, sanitizers and ccache: one place for all targets of this project.

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE RelWithDebInfo CACHE STRING "Build type" FORCE)
endif()

option(VMCORE_WARNINGS_AS_ERRORS "Stop at the first warning" OFF)
set(VMCORE_SANITIZE "" CACHE STRING "Sanitizers to build with: address,undefined or thread")

set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

find_program(CCACHE_PROGRAM ccache)
if(CCACHE_PROGRAM AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
    # A precompiled header is cacheable only with these two checks relaxed.
    set(CMAKE_CXX_COMPILER_LAUNCHER
        ${CMAKE_COMMAND} -E env CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE_PROGRAM})
endif()

if(VMCORE_SANITIZE)
    add_compile_options(-fsanitize=${VMCORE_SANITIZE} -fno-omit-frame-pointer -g)
    add_link_options(-fsanitize=${VMCORE_SANITIZE})
    if(VMCORE_SANITIZE MATCHES undefined)
        # Hosts may send to a window object that is gone; the call tests the pointer before it
        # follows it, which the virtual-table check would not wait for.
        add_compile_options(-fno-sanitize-recover=undefined -fno-sanitize=vptr)
    endif()
endif()

# Warnings of every target written here; third-party code is included as system headers.
function(vmcore_target_warnings target)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
        -Wcast-qual -Wformat=2 -Wimplicit-fallthrough
        $<$<BOOL:${VMCORE_WARNINGS_AS_ERRORS}>:-Werror>)
endfunction()
