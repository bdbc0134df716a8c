# Fails when the library of types does anything at start-up but what its start-up source names, or in another order.
#
# NM, OBJDUMP, READELF: the programs; LIBRARY: the file, with its symbols; POINTER_SIZE: of its platform.

execute_process(COMMAND "${NM}" --defined-only "${LIBRARY}" OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "_GLOBAL__(sub_)?I_[^\n]*" initialisers "${symbols}")
if(LIBRARY MATCHES "\\.dll$")
    # There the function is named by what the source defines first for others, behind the platform's underscore.
    set(expected "_GLOBAL__sub_I__ZN11TypesTables13kRegistrationE")
    set(symbol "_${expected}")
else()
    set(expected "_GLOBAL__sub_I_start_up.cpp")
    set(symbol "${expected}")
endif()
if(NOT initialisers STREQUAL expected)
    message(FATAL_ERROR "expected the initialiser of start_up.cpp alone, found: ${initialisers}")
endif()

# The compiler's own function (`frame_dummy`, `register_frame_ctor`) and that one.
if(LIBRARY MATCHES "\\.dll$")
    foreach(list IN ITEMS CTOR DTOR)
        if(NOT symbols MATCHES "([0-9a-f]+) [A-Za-z] ___${list}_LIST__")
            message(FATAL_ERROR "no ___${list}_LIST__ in ${LIBRARY}")
        endif()
        set(${list} "0x${CMAKE_MATCH_1}")
    endforeach()
    # The list has a mark at both ends, and that of the other kind follows it.
    math(EXPR found "(${DTOR} - ${CTOR}) / ${POINTER_SIZE} - 2")
else()
    execute_process(COMMAND "${READELF}" -SW "${LIBRARY}" OUTPUT_VARIABLE sections COMMAND_ERROR_IS_FATAL ANY)
    if(NOT sections MATCHES "\\.init_array +INIT_ARRAY +[0-9a-f]+ +[0-9a-f]+ +([0-9a-f]+)")
        message(FATAL_ERROR "no .init_array in ${LIBRARY}")
    endif()
    math(EXPR found "0x${CMAKE_MATCH_1} / ${POINTER_SIZE}")
    if(sections MATCHES "\\.ctors")
        message(FATAL_ERROR "${LIBRARY} has old-style constructors, too")
    endif()
endif()
if(NOT found EQUAL 2)
    message(FATAL_ERROR "${found} functions run when the library is loaded, expected 2")
endif()

# What the initialiser calls, in that order, or hands to what it calls. Without optimisation the work is in a function of
# its own.
if(symbols MATCHES " ([^ \n]*__static_initialization_and_destruction_0[^ \n]*)")
    set(symbol "${CMAKE_MATCH_1}")
endif()
execute_process(
    COMMAND "${OBJDUMP}" --disassemble=${symbol} --no-show-raw-insn "${LIBRARY}"
    OUTPUT_VARIABLE code COMMAND_ERROR_IS_FATAL ANY)
# A Windows library calls others through addresses of its own, which have names.
if(symbols MATCHES "([0-9a-f]+) I __imp___ZN5Tavik14TypeInfoLoaderC1")
    string(REPLACE "*0x${CMAKE_MATCH_1}" "<TypeInfoLoaderC1>" code "${code}")
endif()
set(work "atexit|StoreImportedReferences|CompleteDataTypes|TypeInfoLoaderC[12]")
string(REGEX MATCHALL "<[^>\n]*(${work})[^>\n]*>" steps "${code}")
list(TRANSFORM steps REPLACE "^.*(${work}).*$" "\\1")
set(expected "")
foreach(key RANGE 1 8) # each name is destroyed at the end
    list(APPEND expected atexit)
endforeach()
list(APPEND expected StoreImportedReferences CompleteDataTypes TypeInfoLoaderC1)
if(NOT steps STREQUAL expected)
    message(FATAL_ERROR "start-up does these steps:\n  ${steps}\nexpected:\n  ${expected}")
endif()
