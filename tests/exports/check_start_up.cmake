# Fails when the library of types does anything at start-up but what its start-up source names.
#
# NM, READELF: the programs; LIBRARY: the file, with its symbols; POINTER_SIZE: of its platform.

execute_process(COMMAND "${NM}" --defined-only "${LIBRARY}" OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "_GLOBAL__(sub_)?I_[^\n]*" initialisers "${symbols}")
if(NOT initialisers STREQUAL "_GLOBAL__sub_I_start_up.cpp")
    message(FATAL_ERROR "expected the initialiser of start_up.cpp alone, found: ${initialisers}")
endif()

# The compiler's own function (`frame_dummy`) and that one.
execute_process(COMMAND "${READELF}" -SW "${LIBRARY}" OUTPUT_VARIABLE sections COMMAND_ERROR_IS_FATAL ANY)
if(NOT sections MATCHES "\\.init_array +INIT_ARRAY +[0-9a-f]+ +[0-9a-f]+ +([0-9a-f]+)")
    message(FATAL_ERROR "no .init_array in ${LIBRARY}")
endif()
math(EXPR found "0x${CMAKE_MATCH_1} / ${POINTER_SIZE}")
if(NOT found EQUAL 2)
    message(FATAL_ERROR ".init_array holds ${found} functions, expected 2")
endif()
if(sections MATCHES "\\.ctors")
    message(FATAL_ERROR "${LIBRARY} has old-style constructors, too")
endif()
