# A cross build runs the schema compiler on the build machine: build it there first, with the native compiler; and the
# program that writes a test.

include(ExternalProject)

set(hostBinaryDir "${CMAKE_BINARY_DIR}/host")
set(hostTools schemac)
if(MORVANE_TESTS)
    list(APPEND hostTools emit_async_calls)
endif()
list(TRANSFORM hostTools PREPEND "${hostBinaryDir}/bin/" OUTPUT_VARIABLE hostPrograms)

ExternalProject_Add(host_tools
    SOURCE_DIR "${PROJECT_SOURCE_DIR}"
    BINARY_DIR "${hostBinaryDir}"
    CMAKE_ARGS
        -DCMAKE_BUILD_TYPE=Release
        -DBUILD_SHARED_LIBS=OFF
        -DCMAKE_UNITY_BUILD=${CMAKE_UNITY_BUILD}
        -DMORVANE_HOST_TOOLS_ONLY=ON
        -DMORVANE_TESTS=${MORVANE_TESTS}
    BUILD_COMMAND "${CMAKE_COMMAND}" --build "${hostBinaryDir}" --target ${hostTools}
    INSTALL_COMMAND ""
    BUILD_ALWAYS ON
    BUILD_BYPRODUCTS ${hostPrograms})

foreach(tool program IN ZIP_LISTS hostTools hostPrograms)
    add_executable(${tool} IMPORTED GLOBAL)
    set_target_properties(${tool} PROPERTIES IMPORTED_LOCATION "${program}")
    add_dependencies(${tool} host_tools)
endforeach()
add_executable(morvane::schemac ALIAS schemac)
