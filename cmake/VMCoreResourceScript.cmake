# What a build does with the files of a compiled RESOURCE_SCRIPT:
#
#     cmake -DSCRIPT=x.rc -DFOLDER=x_rc -DRESOURCES=.../Resources -DPLIST=.../Info.plist
#           -P VMCoreResourceScript.cmake
#
# `vmcore rc` has put them into FOLDER/files and their names into FOLDER/names.txt. Copies what the program
# loads into RESOURCES, takes away what a former run put there and this one has not, adds the version and the icon
# to FOLDER/Info.plist, and touches FOLDER/stamp. The accelerators' source is
# FOLDER/files/<script>Accelerators.cpp, empty without tables.
cmake_minimum_required(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/VMCoreInfoPlist.cmake)

set(files ${FOLDER}/files)
file(STRINGS ${FOLDER}/names.txt names)

# The bundle gets neither sources nor what goes into Info.plist.
set(former "")
if(EXISTS ${FOLDER}/resources.txt)
    file(STRINGS ${FOLDER}/resources.txt former)
endif()
set(resources ${names})
list(FILTER resources EXCLUDE REGEX "\\.(h|cpp|plist)$")
foreach(name IN LISTS former)
    if(NOT name IN_LIST resources)
        file(REMOVE ${RESOURCES}/${name})
    endif()
endforeach()
foreach(name IN LISTS resources)
    file(COPY_FILE ${files}/${name} ${RESOURCES}/${name} ONLY_IF_DIFFERENT)
endforeach()
list(JOIN resources "\n" lines)
file(WRITE ${FOLDER}/resources.txt "${lines}\n")

cmake_path(GET SCRIPT STEM LAST_ONLY script)
if(NOT "${script}Accelerators.cpp" IN_LIST names)
    foreach(extension h cpp)
        file(CONFIGURE OUTPUT ${files}/${script}Accelerators.${extension}
             CONTENT "// The script has no accelerators.\n")
    endforeach()
endif()

file(READ ${FOLDER}/Info.plist plist)
if("Version.plist" IN_LIST names)
    _vmcore_add_plist_entries(plist "${plist}" ${files}/Version.plist)
endif()
file(WRITE ${PLIST} "${plist}")
file(TOUCH ${FOLDER}/stamp)
