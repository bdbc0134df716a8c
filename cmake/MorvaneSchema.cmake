# Libraries whose types are described by a schema.

include(CheckLinkerFlag)

# Writes all generated sources and compiles nothing of them: enough for what reads the sources only.
add_custom_target(generated_sources)

# morvane_generate_types(<variable> LIBRARY <name> SCHEMA <files>... [IMPORTS <files>...] [IMPORT_LIBRARIES <names>...])
#
# Runs the schema compiler over the files, in that order, and sets the variable to the sources it writes: one for each
# file, and the library's tables. Headers land beside the sources, under the path of the schema. Whatever includes them
# needs a dependency on <name>_schema, which linking to the library gives.
function(morvane_generate_types variable)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "LIBRARY" "SCHEMA;IMPORTS;IMPORT_LIBRARIES")

    set(schema "")
    set(folders "")
    set(sources "${MORVANE_GENERATED_DIR}/${arg_LIBRARY}/tables.gen.cpp")
    foreach(file IN LISTS arg_SCHEMA)
        cmake_path(ABSOLUTE_PATH file NORMALIZE OUTPUT_VARIABLE absolute)
        list(APPEND schema "${absolute}")
        cmake_path(RELATIVE_PATH absolute BASE_DIRECTORY "${PROJECT_SOURCE_DIR}" OUTPUT_VARIABLE relative)
        cmake_path(REMOVE_EXTENSION relative OUTPUT_VARIABLE stem)
        list(APPEND sources "${MORVANE_GENERATED_DIR}/${stem}.gen.cpp")
        cmake_path(GET relative PARENT_PATH folder)
        list(APPEND folders "${MORVANE_GENERATED_DIR}/${folder}/*.h")
    endforeach()
    # What was written before: a build has to know that the schema compiler may write it again, or it compiles what
    # includes it only the next time. A header that is new is included by nothing yet that was compiled.
    list(REMOVE_DUPLICATES folders)
    file(GLOB written CONFIGURE_DEPENDS
        ${folders}
        "${MORVANE_GENERATED_DIR}/${arg_LIBRARY}/tables.h"
        "${MORVANE_GENERATED_DIR}/${arg_LIBRARY}/documentation.*")
    set(imports "")
    set(importOptions "")
    foreach(file IN LISTS arg_IMPORTS)
        list(APPEND imports "${PROJECT_SOURCE_DIR}/${file}")
    endforeach()
    foreach(library IN LISTS arg_IMPORT_LIBRARIES)
        get_target_property(files ${library}_schema MORVANE_SCHEMA)
        list(APPEND imports ${files})
    endforeach()
    foreach(file IN LISTS imports)
        list(APPEND importOptions --import "${file}")
    endforeach()

    set(stamp "${CMAKE_CURRENT_BINARY_DIR}/${arg_LIBRARY}.schema.stamp")
    add_custom_command(
        OUTPUT "${stamp}"
        BYPRODUCTS ${sources} ${written}
        COMMAND morvane::schemac --library "${arg_LIBRARY}" --source-root "${PROJECT_SOURCE_DIR}"
                --out "${MORVANE_GENERATED_DIR}" --stamp "${stamp}" --depfile "${stamp}.d"
                ${importOptions} ${schema}
        DEPENDS morvane::schemac ${schema} ${imports}
        DEPFILE "${stamp}.d"
        COMMENT "Compiling the schema of ${arg_LIBRARY}"
        VERBATIM)
    if(EXISTS "${PROJECT_SOURCE_DIR}/${arg_LIBRARY}/tables.h")
        message(FATAL_ERROR "${PROJECT_SOURCE_DIR}/${arg_LIBRARY}/tables.h is a generated file in the source tree, where "
                            "it would be taken for the fresh one. Remove it, and those that came with it.")
    endif()
    add_custom_target(${arg_LIBRARY}_schema DEPENDS "${stamp}")
    add_dependencies(generated_sources ${arg_LIBRARY}_schema)
    set_target_properties(${arg_LIBRARY}_schema PROPERTIES MORVANE_SCHEMA "${schema}")
    set_source_files_properties(${sources} PROPERTIES GENERATED TRUE)
    # The tables name the field functions of all classes. Seeing their templates' definitions, in one unit with other
    # generated sources, a compiler would instantiate them for classes whose field tables it does not see.
    morvane_compile_alone("${MORVANE_GENERATED_DIR}/${arg_LIBRARY}/tables.gen.cpp")
    set(${variable} ${sources} PARENT_SCOPE)
endfunction()

# morvane_keep_zero_filled(<target>): for whatever compiles generated classes. GCC takes the start of a constructor for the
# start of the object's life and drops what was stored in it before; the generated constructors must find their storage
# as it was.
function(morvane_keep_zero_filled target)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
        target_compile_options(${target} PRIVATE -flifetime-dse=1)
    endif()
endfunction()

# morvane_generated_library(<target>): how a library of generated classes is compiled and linked. Generated functions do next
# to nothing and are many:
#
# - They are compiled for size, and those that can not throw get no unwind table: with the compiler's own frame directives
#   every function would have one.
# - Calls and addresses inside the library are bound when it is linked, so that loading it has little to look up.
function(morvane_generated_library target)
    morvane_keep_zero_filled(${target})
    set(forSize -Os)
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT WIN32)
        list(APPEND forSize -fno-asynchronous-unwind-tables -fno-dwarf2-cfi-asm)
    endif()
    target_compile_options(${target} PRIVATE "$<$<CONFIG:Release>:${forSize}>")
    if(NOT WIN32)
        set(preemptible "${PROJECT_SOURCE_DIR}/cmake/preemptible.list")
        target_link_options(${target} PRIVATE "LINKER:--dynamic-list=${preemptible}")
        set_property(TARGET ${target} APPEND PROPERTY LINK_DEPENDS "${preemptible}")
        check_linker_flag(CXX -Wl,-z,pack-relative-relocs MORVANE_HAS_PACKED_RELOCATIONS)
        if(MORVANE_HAS_PACKED_RELOCATIONS)
            target_link_options(${target} PRIVATE -Wl,-z,pack-relative-relocs)
        endif()
    endif()
endfunction()
