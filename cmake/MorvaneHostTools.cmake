# A cross build runs the schema compiler on the build machine: build it there first, with the native compiler.

include(ExternalProject)

set(hostBinaryDir "${CMAKE_BINARY_DIR}/host")
set(hostSchemac "${hostBinaryDir}/bin/schemac")

ExternalProject_Add(host_tools
    SOURCE_DIR "${PROJECT_SOURCE_DIR}"
    BINARY_DIR "${hostBinaryDir}"
    CMAKE_ARGS
        -DCMAKE_BUILD_TYPE=Release
        -DBUILD_SHARED_LIBS=OFF
        -DCMAKE_UNITY_BUILD=${CMAKE_UNITY_BUILD}
        -DMORVANE_HOST_TOOLS_ONLY=ON
        -DMORVANE_TESTS=OFF
    BUILD_COMMAND "${CMAKE_COMMAND}" --build "${hostBinaryDir}" --target schemac
    INSTALL_COMMAND ""
    BUILD_ALWAYS ON
    BUILD_BYPRODUCTS "${hostSchemac}")

add_executable(schemac IMPORTED GLOBAL)
set_target_properties(schemac PROPERTIES IMPORTED_LOCATION "${hostSchemac}")
add_dependencies(schemac host_tools)
add_executable(morvane::schemac ALIAS schemac)
