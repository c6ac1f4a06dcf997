# What vmcore_add_application runs for a RESOURCE_SCRIPT, in a build:
#
#     cmake -DTOOL=vmcore -DSCRIPT=x.rc -DFOLDER=x_rc -DRESOURCES=.../Resources -DPLIST=.../Info.plist
#           [-DMAIN_MENU=128] -P VMCoreResourceScript.cmake
#
# Compiles the script into FOLDER/files, with the report beside it, copies what the program loads into
# RESOURCES, takes away what a former run put there and this one has not, and writes FOLDER/depfile for
# FOLDER/stamp. The accelerators' source is FOLDER/files/<script>Accelerators.cpp, empty without tables.
cmake_minimum_required(VERSION 3.25)

set(files ${FOLDER}/files)
set(mainMenu "")
if(NOT MAIN_MENU STREQUAL "")
    set(mainMenu --main-menu ${MAIN_MENU})
endif()

execute_process(
    COMMAND ${TOOL} rc ${SCRIPT} --out ${files} --quiet ${mainMenu}
            --report ${FOLDER}/report.txt --depfile ${FOLDER}/tool.d
    RESULT_VARIABLE status)
if(NOT status EQUAL 0)
    message(FATAL_ERROR "${SCRIPT} was not compiled")
endif()
execute_process(COMMAND ${TOOL} rc ${SCRIPT} --out ${files} --list ${mainMenu}
                OUTPUT_VARIABLE names OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE "\n" ";" names "${names}")

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

# The version's entries before the end of the list.
file(READ ${FOLDER}/Info.plist plist)
if("Version.plist" IN_LIST names)
    file(READ ${files}/Version.plist version)
    if(version MATCHES "<dict>\n(.*)</dict>")
        string(REPLACE "</dict>" "${CMAKE_MATCH_1}</dict>" plist "${plist}")
    endif()
endif()
file(WRITE ${PLIST} "${plist}")

# Only the first of the tool's rules, and for the one file that the build knows.
file(READ ${FOLDER}/tool.d rules)
string(FIND "${rules}" ":" start)
string(SUBSTRING "${rules}" ${start} -1 rules)
string(FIND "${rules}" "\n\n" end)
string(SUBSTRING "${rules}" 0 ${end} rule)
string(REPLACE " " "\\ " stamp "${FOLDER}/stamp")
file(WRITE ${FOLDER}/depfile "${stamp}${rule}\n")
file(TOUCH ${FOLDER}/stamp)
