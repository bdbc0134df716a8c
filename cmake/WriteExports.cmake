# Writes the names of all that a shared library exports to a file, sorted, one a line.
#
# NM, OBJDUMP: the programs, for the platform of the library; LIBRARY: the file; LIST: what is written.

if(LIBRARY MATCHES "\\.dll$")
    execute_process(
        COMMAND "${OBJDUMP}" --private-headers "${LIBRARY}"
        OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
    string(FIND "${text}" "[Ordinal/Name Pointer] Table" start)
    if(start EQUAL -1)
        message(FATAL_ERROR "${LIBRARY} has no table of exported names")
    endif()
    string(SUBSTRING "${text}" ${start} -1 text)
    # Newer programs tell the ordinal and the hint before the name.
    string(REGEX MATCHALL "\n\t\\[ *[0-9]+\\] [^\n]+" rows "${text}")
    list(TRANSFORM rows REPLACE "^.*[] ]([^ ]+)$" "\\1")
else()
    execute_process(
        COMMAND "${NM}" --dynamic --defined-only --format=posix "${LIBRARY}"
        OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL "[^\n]+" rows "${text}")
    list(TRANSFORM rows REPLACE " .*$" "")
endif()
list(SORT rows)
list(JOIN rows "\n" text)
file(WRITE "${LIST}" "${text}\n")
