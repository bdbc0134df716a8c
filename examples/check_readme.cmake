# The program in the README is the one that is built and run here.
#
# Usage: cmake -D README=<file> -D PROGRAM=<file> -P check_readme.cmake
file(READ "${README}" readme)
file(READ "${PROGRAM}" program)
string(FIND "${readme}" "${program}" place)
if(place EQUAL -1)
    message(FATAL_ERROR "${README} does not hold the program of ${PROGRAM}.")
endif()
