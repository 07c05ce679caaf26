# oneTBB: Debian's headers and its names.
add_library(TBB::tbb SHARED IMPORTED)
set_target_properties(TBB::tbb PROPERTIES
    IMPORTED_LOCATION ${BRIMLO_MAC_SDK}/packages/lib/libtbb.tbd
    INTERFACE_INCLUDE_DIRECTORIES ${BRIMLO_MAC_SDK}/packages/include)
