# How this project declares its libraries and programs.

include(GenerateExportHeader)

# Where generated files live; their paths below it are the same as repository paths.
set(MORVANE_GENERATED_DIR "${CMAKE_BINARY_DIR}/generated")

# morvane_add_subdirectory(<dir>): adds the folder when it has a CMakeLists.txt.
function(morvane_add_subdirectory dir)
    if(EXISTS "${CMAKE_CURRENT_SOURCE_DIR}/${dir}/CMakeLists.txt")
        add_subdirectory("${dir}")
    endif()
endfunction()

# morvane_set_options(<target>): our warnings and link rules; never inherited by users of the target.
function(morvane_set_options target)
    target_compile_options(${target} PRIVATE
        -Wall -Wextra -Wconversion -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
        $<$<BOOL:${MORVANE_WARNINGS_AS_ERRORS}>:-Werror>)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
        # Reports the joining of short strings, where there is nothing to report.
        target_compile_options(${target} PRIVATE -Wno-restrict)
    endif()
    if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        # Takes what is local to a source file for something in a header, because the file is included.
        target_compile_options(${target} PRIVATE -Wno-subobject-linkage)
    endif()
    if(NOT WIN32)
        target_link_options(${target} PRIVATE -Wl,--as-needed)
        # Clang leaves the sanitizers' symbols of a shared library to the program that loads it.
        if(NOT MORVANE_SANITIZE)
            target_link_options(${target} PRIVATE -Wl,-z,defs)
        endif()
    endif()
endfunction()

# morvane_call_directly(<target>): the functions of other libraries, which are found when this one is loaded, and called
# without a stub that would look for them at the first call. With 32 bits that would take a register for each call.
function(morvane_call_directly target)
    if(CMAKE_SIZEOF_VOID_P EQUAL 8)
        target_compile_options(${target} PRIVATE -fno-plt)
    endif()
endfunction()

# morvane_compile_alone(<files>...): sources of this folder that no unity build puts together with others. On Windows the
# system's headers make macros of common words, so what reads them stands alone.
function(morvane_compile_alone)
    set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

# morvane_link(<target> PUBLIC <libs>... PRIVATE <libs>...): as target_link_libraries, but private header-only
# dependencies stay out of the installed package.
function(morvane_link target)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "PUBLIC;PRIVATE")
    target_link_libraries(${target} PUBLIC ${arg_PUBLIC})
    foreach(library IN LISTS arg_PRIVATE)
        target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:${library}>)
    endforeach()
endfunction()

# morvane_add_library(<name> SOURCES <files>... [PUBLIC_LIBS <libs>...] [PRIVATE_LIBS <libs>...] [OUTPUT_NAME <name>])
#
# A shared library (static with BUILD_SHARED_LIBS=OFF) with the alias morvane::<name>. Its symbols are hidden unless
# marked with <NAME>_API from the generated header "<name>/export.h". It is installed with the package.
function(morvane_add_library name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "OUTPUT_NAME" "SOURCES;PUBLIC_LIBS;PRIVATE_LIBS")
    string(TOUPPER "${name}" upperName)

    add_library(${name} ${arg_SOURCES})
    add_library(morvane::${name} ALIAS ${name})
    set_target_properties(${name} PROPERTIES
        VERSION "${PROJECT_VERSION}"
        SOVERSION "${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}")
    if(arg_OUTPUT_NAME)
        set_target_properties(${name} PROPERTIES OUTPUT_NAME "${arg_OUTPUT_NAME}")
    endif()

    target_compile_features(${name} PUBLIC cxx_std_20)
    target_include_directories(${name} PUBLIC
        "$<BUILD_INTERFACE:${MORVANE_GENERATED_DIR}>"
        "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>"
        "$<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/morvaneTypes>")
    morvane_link(${name} PUBLIC ${arg_PUBLIC_LIBS} PRIVATE ${arg_PRIVATE_LIBS})
    morvane_set_options(${name})

    generate_export_header(${name}
        EXPORT_FILE_NAME "${MORVANE_GENERATED_DIR}/${name}/export.h"
        EXPORT_MACRO_NAME "${upperName}_API"
        STATIC_DEFINE "${upperName}_STATIC"
        DEFINE_NO_DEPRECATED)
    if(NOT BUILD_SHARED_LIBS)
        target_compile_definitions(${name} PUBLIC ${upperName}_STATIC)
    elseif(NOT WIN32)
        # What a library has registered with the runtime stays in use until the process ends. Its own functions are
        # bound when it is linked.
        target_link_options(${name} PRIVATE -Wl,-z,nodelete -Wl,-Bsymbolic-functions)
        morvane_call_directly(${name})
    endif()

    install(TARGETS ${name} EXPORT morvaneTypesTargets
        RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}"
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}"
        ARCHIVE DESTINATION "${CMAKE_INSTALL_LIBDIR}")
endfunction()

# Where the lists of exports are.
set(MORVANE_EXPORTS_DIR "${CMAKE_BINARY_DIR}/exports")

# morvane_write_exports(<target>): whenever a shared library is linked, lists what it exports in exports/<target>.txt of
# the build folder: the linker's names, sorted, one a line.
function(morvane_write_exports target)
    if(NOT BUILD_SHARED_LIBS)
        return()
    endif()
    set(script "${PROJECT_SOURCE_DIR}/cmake/WriteExports.cmake")
    set(list "${MORVANE_EXPORTS_DIR}/${target}.txt")
    add_custom_command(TARGET ${target} POST_BUILD
        COMMAND "${CMAKE_COMMAND}" -D "NM=${CMAKE_NM}" -D "OBJDUMP=${CMAKE_OBJDUMP}"
                -D "LIBRARY=$<TARGET_FILE:${target}>" -D "LIST=${list}" -P "${script}"
        BYPRODUCTS "${list}"
        VERBATIM)
    set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${script}")
endfunction()

# morvane_add_executable(<name> SOURCES <files>... [LIBS <libs>...] [INSTALL])
function(morvane_add_executable name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "INSTALL" "" "SOURCES;LIBS")
    add_executable(${name} ${arg_SOURCES})
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}")
    target_link_libraries(${name} PRIVATE ${arg_LIBS})
    morvane_set_options(${name})
    if(arg_INSTALL)
        install(TARGETS ${name} RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}")
    endif()
endfunction()

# morvane_install_headers(<dir> [EXCLUDE <regex>...]): installs the headers of a folder of the repository and those
# generated under the same path, keeping their paths. Paths that match a regular expression are left out.
function(morvane_install_headers dir)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "EXCLUDE")
    set(excludes "")
    foreach(regex IN LISTS arg_EXCLUDE)
        list(APPEND excludes REGEX "${regex}" EXCLUDE)
    endforeach()
    cmake_path(GET dir PARENT_PATH parent)
    cmake_path(APPEND CMAKE_INSTALL_INCLUDEDIR morvaneTypes "${parent}" OUTPUT_VARIABLE destination)
    foreach(root IN ITEMS "${PROJECT_SOURCE_DIR}" "${MORVANE_GENERATED_DIR}")
        install(DIRECTORY "${root}/${dir}"
            DESTINATION "${destination}"
            OPTIONAL
            FILES_MATCHING PATTERN "*.h" ${excludes})
    endforeach()
endfunction()
