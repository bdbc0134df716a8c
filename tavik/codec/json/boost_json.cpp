// The one place where the functions of Boost.JSON are compiled.
#include <boost/json/src.hpp>
