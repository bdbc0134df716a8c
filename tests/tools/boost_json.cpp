// The functions of Boost.JSON, which the tests read the program's output with.
#include <boost/json/src.hpp>
