# GoogleTest from Debian's copy of its sources; tests bring their own main.
add_library(GoogleMock STATIC
    /usr/src/googletest/googletest/src/gtest-all.cc
    /usr/src/googletest/googlemock/src/gmock-all.cc)
add_library(GTest::gmock ALIAS GoogleMock)
target_include_directories(GoogleMock SYSTEM
    PUBLIC ${BRIMLO_MAC_SDK}/packages/include
    PRIVATE /usr/src/googletest/googletest /usr/src/googletest/googlemock)
