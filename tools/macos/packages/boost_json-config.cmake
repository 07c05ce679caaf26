# Boost.JSON from its headers alone, as a library of one source.
file(WRITE ${CMAKE_BINARY_DIR}/packages/BoostJson.cpp "#include <boost/json/src.hpp>\n")
add_library(BoostJson STATIC ${CMAKE_BINARY_DIR}/packages/BoostJson.cpp)
add_library(Boost::json ALIAS BoostJson)
target_include_directories(BoostJson SYSTEM PUBLIC ${BRIMLO_MAC_SDK}/packages/include)
