# vmcore_add_application(NAME <target> SOURCES <files...> [RESOURCES <files or folders...>]
#                        [PLUGINS <targets or files...>] [BUNDLE_NAME <name>] [HELP_BOOK <folder>]
#                        [INFO <file>] [ICON <file.png>]
#                        [RESOURCE_SCRIPT <file.rc> [MAIN_MENU <id>] [RESOURCE_SCRIPT_OPTIONS <options...>]])
#
# Makes the executable <target> inside the bundle the library looks for at run time:
#
#     <BUNDLE_NAME>.app/Contents/MacOS/<target>
#                               /Resources/    RESOURCES and the HELP_BOOK folder
#                               /PlugIns/      PLUGINS
#                               /Info.plist    CFBundleName, "Executable file", CFBundleHelpBookName,
#                                             CFBundleIconFile
#
# in the current binary folder. BUNDLE_NAME is the target's name by default. The entries of INFO, a
# property list such as the Version.plist that `vmcore rc` writes, are added to Info.plist; of a key that it
# has already the value stays. A plug-in that is a target of this build must be defined before. The
# bundle's path is the target's property VMCORE_BUNDLE. Works in this project and in one that found the
# installed package. ICON is the picture of the program's windows; it is copied into Resources.
#
# RESOURCE_SCRIPT is compiled with `vmcore rc` in each build in which it, or a file that it names, has
# changed: its dialogs, menus, texts and pictures go into the bundle, its version and its icon into Info.plist,
# unless INFO and ICON say others; MAIN_MENU is the number of the menu that becomes the application's.
# RESOURCE_SCRIPT_OPTIONS are --include <folders...> (relative ones of the current source folder),
# --define <NAME[=VALUE]...>, --language <language> and --codepage <number>, as `vmcore rc` has them. The
# accelerators' source is compiled into the target, which finds its header as "<script>Accelerators.h". The
# report is <target>_rc/report.txt in the current binary folder. The tool is this build's, else the
# installed one: the variable VMCORE_TOOL.
#
# vmcore_install_application(<target> COMMAND <name> [COMPONENT <component>])
#
# Installs the bundle of such a target as <libdir>/<name>/<BUNDLE_NAME>.app and the link <bindir>/<name>,
# by which users call it: a program finds its bundle through links.

# vmcore_add_plugin(<target> <source files...>)
#
# Makes a loadable module that is linked to the library. Its names are its own, also where another
# module in the process has the same ones: nothing is exported that the sources do not mark so, and
# what is exported is not looked up elsewhere. Once loaded it stays in memory, because windows, timers
# and callbacks of it may outlive the interest of who has loaded it.

# Whatever the project asks for; among them CMP0116, without which ninja builds resources every time.
cmake_policy(VERSION 3.25)
include(${CMAKE_CURRENT_LIST_DIR}/VMCoreInfoPlist.cmake)
set(VMCORE_INFO_PLIST_TEMPLATE ${CMAKE_CURRENT_LIST_DIR}/Info.plist.in CACHE INTERNAL "")
set(VMCORE_RESOURCE_SCRIPT_STEP ${CMAKE_CURRENT_LIST_DIR}/VMCoreResourceScript.cmake CACHE INTERNAL "")

function(vmcore_add_application)
    cmake_parse_arguments(PARSE_ARGV 0 app ""
                          "NAME;BUNDLE_NAME;HELP_BOOK;INFO;ICON;RESOURCE_SCRIPT;MAIN_MENU"
                          "SOURCES;RESOURCES;PLUGINS;RESOURCE_SCRIPT_OPTIONS")
    if(NOT app_NAME OR NOT app_SOURCES)
        message(FATAL_ERROR "vmcore_add_application needs NAME and SOURCES")
    endif()
    if(app_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "vmcore_add_application does not know ${app_UNPARSED_ARGUMENTS}")
    endif()
    if(NOT app_BUNDLE_NAME)
        set(app_BUNDLE_NAME ${app_NAME})
    endif()
    set(bundle ${CMAKE_CURRENT_BINARY_DIR}/${app_BUNDLE_NAME}.app)

    add_executable(${app_NAME} ${app_SOURCES})
    target_link_libraries(${app_NAME} PRIVATE VMCore::VMCore)
    # The generator expression keeps multi-configuration generators from adding a folder.
    set_target_properties(${app_NAME} PROPERTIES
        RUNTIME_OUTPUT_DIRECTORY $<1:${bundle}/Contents/MacOS>
        VMCORE_BUNDLE ${bundle}
        VMCORE_PLUGINS "${app_PLUGINS}")

    set(contents ${bundle}/Contents)
    set(infoFolder ${contents})
    file(MAKE_DIRECTORY ${contents}/Resources ${contents}/PlugIns)
    if(app_RESOURCE_SCRIPT)
        set(infoFolder ${CMAKE_CURRENT_BINARY_DIR}/${app_NAME}_rc)
        _vmcore_script_arguments(arguments "${app_MAIN_MENU}" ${app_RESOURCE_SCRIPT_OPTIONS})
        _vmcore_compile_script(${app_NAME} ${app_RESOURCE_SCRIPT} ${infoFolder} ${contents}
                               "${arguments}")
    elseif(app_MAIN_MENU OR app_RESOURCE_SCRIPT_OPTIONS)
        message(FATAL_ERROR "MAIN_MENU and RESOURCE_SCRIPT_OPTIONS need RESOURCE_SCRIPT")
    endif()
    _vmcore_write_info_plist(${infoFolder} ${app_NAME} ${app_BUNDLE_NAME} "${app_HELP_BOOK}"
                             "${app_ICON}" "${app_INFO}")
    _vmcore_copy_into(${app_NAME} resources ${bundle}/Contents/Resources
                      ${app_RESOURCES} ${app_HELP_BOOK} ${app_ICON})
    _vmcore_add_plugins(${app_NAME} ${bundle}/Contents/PlugIns ${app_PLUGINS})
endfunction()

function(vmcore_install_application target)
    cmake_parse_arguments(PARSE_ARGV 1 app "" "COMMAND;COMPONENT" "")
    get_target_property(bundle ${target} VMCORE_BUNDLE)
    if(NOT bundle OR NOT app_COMMAND OR app_UNPARSED_ARGUMENTS)
        message(FATAL_ERROR "vmcore_install_application needs a target made by "
                            "vmcore_add_application, and COMMAND; it knows COMPONENT besides")
    endif()
    if(NOT app_COMPONENT)
        set(app_COMPONENT ${CMAKE_INSTALL_DEFAULT_COMPONENT_NAME})
    endif()
    include(GNUInstallDirs)
    cmake_path(GET bundle FILENAME bundleName)
    set(folder ${app_COMMAND}/${bundleName}/Contents) # below <libdir>
    set(contents ${CMAKE_INSTALL_LIBDIR}/${folder})
    set(component COMPONENT ${app_COMPONENT})

    install(TARGETS ${target} RUNTIME DESTINATION ${contents}/MacOS ${component})
    install(FILES ${bundle}/Contents/Info.plist DESTINATION ${contents} ${component})
    install(DIRECTORY ${bundle}/Contents/Resources DESTINATION ${contents} ${component})
    _vmcore_install_plugins(${target} ${contents}/PlugIns ${app_COMPONENT})

    file(RELATIVE_PATH executable ${CMAKE_INSTALL_FULL_BINDIR}
         ${CMAKE_INSTALL_FULL_LIBDIR}/${folder}/MacOS/${target})
    set(link ${CMAKE_CURRENT_BINARY_DIR}/${target}-link/${app_COMMAND})
    file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/${target}-link)
    file(CREATE_LINK ${executable} ${link} SYMBOLIC)
    install(FILES ${link} DESTINATION ${CMAKE_INSTALL_BINDIR} ${component})
endfunction()

function(_vmcore_install_plugins target folder component)
    get_target_property(plugins ${target} VMCORE_PLUGINS)
    foreach(plugin IN LISTS plugins)
        if(TARGET ${plugin})
            install(TARGETS ${plugin} LIBRARY DESTINATION ${folder} COMPONENT ${component})
        elseif(plugin)
            install(FILES ${plugin} DESTINATION ${folder} COMPONENT ${component})
        endif()
    endforeach()
endfunction()

function(vmcore_add_plugin target)
    add_library(${target} MODULE ${ARGN})
    target_link_libraries(${target} PRIVATE VMCore::VMCore)
    target_link_options(${target} PRIVATE -Wl,-Bsymbolic -Wl,-z,nodelete)
    # Else one module would have the variables of another one's inline functions.
    target_compile_options(${target} PRIVATE
        $<$<COMPILE_LANG_AND_ID:CXX,GNU>:-fno-gnu-unique>)
    set_target_properties(${target} PROPERTIES
        PREFIX "" CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
endfunction()

# The tool of this build, or the one beside the found package.
function(_vmcore_find_tool command dependency)
    if(TARGET VMCore::tool)
        set(${command} $<TARGET_FILE:VMCore::tool> PARENT_SCOPE)
        set(${dependency} VMCore::tool PARENT_SCOPE)
        return()
    endif()
    find_program(VMCORE_TOOL vmcore HINTS ${VMCORE_TOOL_FOLDER}
                 DOC "The command-line tool, which compiles resource scripts")
    if(NOT VMCORE_TOOL)
        message(FATAL_ERROR "RESOURCE_SCRIPT needs the program vmcore (package vmcore-tools), or "
                            "VMCORE_TOOL=<its path>")
    endif()
    set(${command} ${VMCORE_TOOL} PARENT_SCOPE)
    set(${dependency} ${VMCORE_TOOL} PARENT_SCOPE)
endfunction()

# The tool's own arguments for what MAIN_MENU and RESOURCE_SCRIPT_OPTIONS say.
function(_vmcore_script_arguments result mainMenu)
    cmake_parse_arguments(PARSE_ARGV 2 given "" "--language;--codepage" "--include;--define")
    if(given_UNPARSED_ARGUMENTS OR given_KEYWORDS_MISSING_VALUES)
        message(FATAL_ERROR "RESOURCE_SCRIPT_OPTIONS knows --include, --define, --language and --codepage, "
                "each with a value: ${given_UNPARSED_ARGUMENTS}${given_KEYWORDS_MISSING_VALUES}")
    endif()
    set(arguments "")
    foreach(folder IN LISTS given_--include)
        if(NOT folder MATCHES "^\\$<")
            cmake_path(ABSOLUTE_PATH folder NORMALIZE)
        endif()
        list(APPEND arguments --include "${folder}")
    endforeach()
    foreach(define IN LISTS given_--define)
        list(APPEND arguments --define "${define}")
    endforeach()
    foreach(option --language --codepage)
        if(DEFINED given_${option})
            list(APPEND arguments ${option} "${given_${option}}")
        endif()
    endforeach()
    if(NOT mainMenu STREQUAL "")
        list(APPEND arguments --main-menu ${mainMenu})
    endif()
    set(${result} "${arguments}" PARENT_SCOPE)
endfunction()

function(_vmcore_compile_script target script folder contents arguments)
    cmake_path(ABSOLUTE_PATH script NORMALIZE)
    cmake_path(GET script STEM LAST_ONLY name)
    _vmcore_find_tool(tool toolDependency)
    set(accelerators ${folder}/files/${name}Accelerators)
    # make does not look whether a command has changed.
    file(CONFIGURE OUTPUT ${folder}/arguments.txt CONTENT "@arguments@\n" @ONLY)
    add_custom_command(
        OUTPUT ${folder}/stamp ${accelerators}.cpp ${accelerators}.h
        DEPENDS ${script} ${toolDependency} ${folder}/Info.plist ${folder}/arguments.txt
                ${VMCORE_RESOURCE_SCRIPT_STEP}
        DEPFILE ${folder}/depfile
        COMMAND ${tool} rc ${script} ${arguments} --out ${folder}/files --names ${folder}/names.txt
                --quiet --report ${folder}/report.txt
                --depfile ${folder}/depfile --depfile-target ${folder}/stamp
        COMMAND ${CMAKE_COMMAND} -DSCRIPT=${script} -DFOLDER=${folder}
                -DRESOURCES=${contents}/Resources -DPLIST=${contents}/Info.plist
                -P ${VMCORE_RESOURCE_SCRIPT_STEP}
        COMMENT "Compiling resources ${name}.rc" VERBATIM)
    add_custom_target(${target}_script ALL DEPENDS ${folder}/stamp)
    add_dependencies(${target} ${target}_script)
    target_sources(${target} PRIVATE ${accelerators}.cpp ${accelerators}.h)
    target_include_directories(${target} PRIVATE ${folder}/files)
endfunction()

# The entry of a key whose value is the name of a file or folder; empty without one.
function(_vmcore_file_entry result key file)
    set(entry "")
    if(file)
        cmake_path(GET file FILENAME name)
        set(entry "\n\t<key>${key}</key>\n\t<string>${name}</string>")
    endif()
    set(${result} "${entry}" PARENT_SCOPE)
endfunction()

# A change of `info` configures anew.
function(_vmcore_write_info_plist folder executable name helpBook icon info)
    _vmcore_file_entry(helpBookEntry CFBundleHelpBookName "${helpBook}")
    _vmcore_file_entry(iconEntry CFBundleIconFile "${icon}")
    file(READ ${VMCORE_INFO_PLIST_TEMPLATE} plist)
    string(CONFIGURE "${plist}" plist @ONLY)
    if(info)
        cmake_path(ABSOLUTE_PATH info NORMALIZE)
        set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${info})
        _vmcore_add_plist_entries(plist "${plist}" ${info})
    endif()
    file(CONFIGURE OUTPUT ${folder}/Info.plist CONTENT "@plist@" @ONLY)
endfunction()

# Copies files and folders into `folder` whenever they change.
function(_vmcore_copy_into target purpose folder)
    set(stamps "")
    foreach(source IN LISTS ARGN)
        cmake_path(ABSOLUTE_PATH source NORMALIZE)
        cmake_path(GET source FILENAME name)
        if(IS_DIRECTORY ${source})
            set(stamp ${CMAKE_CURRENT_BINARY_DIR}/${target}.${name}.stamp)
            file(GLOB_RECURSE contents CONFIGURE_DEPENDS ${source}/*)
            add_custom_command(OUTPUT ${stamp} DEPENDS ${contents} VERBATIM
                COMMAND ${CMAKE_COMMAND} -E copy_directory ${source} ${folder}/${name}
                COMMAND ${CMAKE_COMMAND} -E touch ${stamp})
        else()
            set(stamp ${folder}/${name})
            add_custom_command(OUTPUT ${stamp} DEPENDS ${source} VERBATIM
                COMMAND ${CMAKE_COMMAND} -E copy ${source} ${stamp})
        endif()
        list(APPEND stamps ${stamp})
    endforeach()
    if(stamps)
        add_custom_target(${target}_${purpose} ALL DEPENDS ${stamps})
        add_dependencies(${target} ${target}_${purpose})
    endif()
endfunction()

function(_vmcore_add_plugins target folder)
    set(files "")
    foreach(plugin IN LISTS ARGN)
        if(TARGET ${plugin})
            set_target_properties(${plugin} PROPERTIES
                LIBRARY_OUTPUT_DIRECTORY $<1:${folder}> PREFIX "")
            add_dependencies(${target} ${plugin})
        else()
            list(APPEND files ${plugin})
        endif()
    endforeach()
    _vmcore_copy_into(${target} plugins ${folder} ${files})
endfunction()
