# How this project declares its tests.

# GoogleTest comes as source from the system's package, so that every preset builds it with its own compiler and flags.
function(morvane_add_googletest)
    set(sourceDir "/usr/src/googletest")
    if(NOT EXISTS "${sourceDir}/CMakeLists.txt")
        message(FATAL_ERROR "GoogleTest's source is missing: ${sourceDir}. `make setup` installs what the build needs.")
    endif()
    set(BUILD_SHARED_LIBS OFF)
    set(BUILD_GMOCK ON CACHE BOOL "" FORCE)
    set(CMAKE_UNITY_BUILD OFF)
    set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
    set(CMAKE_CXX_VISIBILITY_PRESET default)
    add_subdirectory("${sourceDir}" "${CMAKE_BINARY_DIR}/third_party/googletest" EXCLUDE_FROM_ALL SYSTEM)
    foreach(target IN ITEMS gtest gtest_main gmock gmock_main)
        target_compile_options(${target} PRIVATE -w)
    endforeach()
endfunction()

morvane_add_googletest()
include(GoogleTest)

# morvane_add_test(<name> SOURCES <files>... [LIBS <libs>...])
#
# A GoogleTest program whose cases are registered one by one. In a cross build the program is one test, as its emulator, if
# it has one, takes longer to begin than most cases take.
function(morvane_add_test name)
    cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBS")
    morvane_add_executable(${name} SOURCES ${arg_SOURCES} LIBS ${arg_LIBS} test_main)
    # Lets backtraces name the functions of the test itself.
    set_target_properties(${name} PROPERTIES ENABLE_EXPORTS ON)
    if(NOT CMAKE_CROSSCOMPILING)
        gtest_discover_tests(${name}
            TEST_PREFIX "${name}."
            DISCOVERY_MODE PRE_TEST
            PROPERTIES TIMEOUT 300)
    elseif(CMAKE_CROSSCOMPILING_EMULATOR)
        add_test(NAME ${name} COMMAND ${name})
        # Those of many sources take longest, and are begun first.
        list(LENGTH arg_SOURCES sourceCount)
        set_tests_properties(${name} PROPERTIES TIMEOUT 240 COST ${sourceCount})
    endif()
endfunction()
