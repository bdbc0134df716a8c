# Header-only libraries from the system's packages, for private use.
#
# They are reached through a folder of links that holds nothing else. Adding /usr/include itself would put the build
# machine's C library in front of that of a cross target.
function(morvane_add_third_party_headers)
    set(linkDir "${CMAKE_BINARY_DIR}/third_party/include")
    file(MAKE_DIRECTORY "${linkDir}")
    foreach(folder IN ITEMS boost CLI)
        find_path(MORVANE_${folder}_PARENT NAMES "${folder}"
            PATHS /usr/include /usr/local/include
            NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
        mark_as_advanced(MORVANE_${folder}_PARENT)
        if(NOT MORVANE_${folder}_PARENT)
            message(FATAL_ERROR "The headers <${folder}/...> are missing. `make setup` installs what the build needs.")
        endif()
        file(CREATE_LINK "${MORVANE_${folder}_PARENT}/${folder}" "${linkDir}/${folder}" SYMBOLIC)
    endforeach()

    add_library(third_party_headers INTERFACE)
    target_include_directories(third_party_headers SYSTEM INTERFACE "${linkDir}")
endfunction()

morvane_add_third_party_headers()
find_package(Threads REQUIRED)
