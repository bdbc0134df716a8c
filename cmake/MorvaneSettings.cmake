# Settings that hold for every target of the build, third-party ones included.

include(GNUInstallDirs)

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
    set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

# One place for what runs and one for what links, so that programs and tests find the libraries in the build tree.
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")
set(CMAKE_ARCHIVE_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/lib")

# Both trees can be moved as a whole: libraries are looked for relative to the file that needs them.
file(RELATIVE_PATH MORVANE_BIN_TO_LIB "/${CMAKE_INSTALL_BINDIR}" "/${CMAKE_INSTALL_LIBDIR}")
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
set(CMAKE_INSTALL_RPATH "$ORIGIN;$ORIGIN/${MORVANE_BIN_TO_LIB}")

if(NOT CMAKE_CXX_COMPILER_LAUNCHER)
    find_program(MORVANE_CCACHE ccache)
    mark_as_advanced(MORVANE_CCACHE)
    if(MORVANE_CCACHE)
        # What precompiled headers need to be found in the cache.
        set(CMAKE_CXX_COMPILER_LAUNCHER
            "${CMAKE_COMMAND}" -E env
            CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime "${MORVANE_CCACHE}")
    endif()
endif()

if(MORVANE_SANITIZE)
    # The function check compares type information by address, which is not unique between libraries with hidden
    # symbols: it would report every call through a table of another library.
    add_compile_options(-fsanitize=${MORVANE_SANITIZE} -fno-sanitize=function -fno-sanitize-recover=all
                        -fno-omit-frame-pointer)
    add_link_options(-fsanitize=${MORVANE_SANITIZE})
endif()

if(MINGW)
    # Exceptions cross library borders, so all modules share one compiler run-time, which lies beside the programs.
    set(MORVANE_RUNTIME_DLLS "")
    foreach(dll IN ITEMS libgcc_s_dw2-1.dll libstdc++-6.dll libwinpthread-1.dll)
        execute_process(
            COMMAND "${CMAKE_CXX_COMPILER}" -print-file-name=${dll}
            OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
        list(APPEND MORVANE_RUNTIME_DLLS "${path}")
    endforeach()
    file(COPY ${MORVANE_RUNTIME_DLLS} DESTINATION "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}")
endif()
