# Fails when a library of types exports something that is not meant for its users.
#
# NM: the program; LIBRARY: the file; NAMESPACE: that of its types; STRICT: whether that holds for templates of the C++
# library, too, which are visible because that library says so.

execute_process(
    COMMAND "${NM}" --dynamic --demangle --defined-only "${LIBRARY}"
    OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REPLACE ";" "," symbols "${symbols}")
string(REPLACE "[" "(" symbols "${symbols}") # brackets would join the elements of a list
string(REPLACE "]" ")" symbols "${symbols}")
string(REGEX REPLACE "\n$" "" symbols "${symbols}")
string(REPLACE "\n" ";" symbols "${symbols}")

# An array class is compiled into every library that makes such arrays.
set(values "Tavik::(DataArray<[A-Z][A-Za-z]*|(Array|Primitive)<${NAMESPACE})::")
set(meant
    "${NAMESPACE}::"
    "${values}"
    "(vtable|VTT|typeinfo|typeinfo name) for (${NAMESPACE}::|${values})"
    "(construction vtable for [A-Za-z:]+-in-|virtual thunk to |non-virtual thunk to )${NAMESPACE}::"
    "Tavik::(DataObjectType|EnumType|ManagedObjectType)\\* Tavik::Get(Do|Enum|Mo)Type<${NAMESPACE}::")
if(NOT STRICT)
    list(APPEND meant "([a-z]+ )?std::")
endif()
set(internal "Morvane::Support|Tables::|versionRecord|TypeInfo>|::g[A-Za-z0-9_]+(Properties|Methods)$")

set(foreign "")
list(LENGTH symbols count)
foreach(symbol IN LISTS symbols)
    string(REGEX REPLACE "^[0-9a-f]+ . " "" name "${symbol}")
    set(isMeant OFF)
    foreach(pattern IN LISTS meant) # one by one: a single expression would have more groups than CMake takes
        if(name MATCHES "^(${pattern})")
            set(isMeant ON)
        endif()
    endforeach()
    if(NOT isMeant OR name MATCHES "${internal}")
        string(APPEND foreign "\n  ${name}")
    endif()
endforeach()
if(foreign)
    message(FATAL_ERROR "${LIBRARY} exports what is not meant for its users:${foreign}")
endif()
if(NOT symbols MATCHES "GetMoType<${NAMESPACE}::")
    message(FATAL_ERROR "${LIBRARY} does not export what it must: ${count} symbols found")
endif()
message(STATUS "${count} symbols, all of them meant")
