// Precompiled for the sources that include Boost's heavy headers.
#include <boost/phoenix.hpp>
#include <boost/spirit/include/qi.hpp>
