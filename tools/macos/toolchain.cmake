# Builds for macOS 14 on Linux: clang 19 over the SDK that tools/macos/make-sdk put together.
#
#   cmake --toolchain tools/macos/toolchain.cmake -DBRIMLO_MAC_SDK=FOLDER -DBRIMLO_MAC_ARCH=arm64
#
# What comes out are real programs for a Mac, but one linked against stubs of the libraries.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_VERSION 23.0)  # Of the kernel in macOS 14.
set(CMAKE_SYSTEM_PROCESSOR ${BRIMLO_MAC_ARCH})
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES BRIMLO_MAC_SDK BRIMLO_MAC_ARCH)

# CMake would look for Xcode's SDK and add flags of its own for it.
foreach(variable CMAKE_OSX_SYSROOT CMAKE_OSX_ARCHITECTURES CMAKE_OSX_DEPLOYMENT_TARGET)
    set(${variable} "" CACHE STRING "" FORCE)
endforeach()

set(sdk ${BRIMLO_MAC_SDK}/sdk)
# Debian's own libc++, should it be installed, is that of another system. The definitions are those
# that Apple's build of libc++ has in its configuration, which the headers come without.
string(JOIN " " flags
    -isysroot ${sdk}
    -stdlib++-isystem ${sdk}/usr/include/c++/v1
    -D_LIBCPP_ABI_VERSION=1 -D_LIBCPP_ABI_NAMESPACE=__1 -D_LIBCPP_PSTL_BACKEND_SERIAL
    -D_LIBCPP_HARDENING_MODE=_LIBCPP_HARDENING_MODE_NONE
    # Else ccache takes each precompiled header for a new one.
    "-Xclang -fno-pch-timestamp"
    # A call that macOS 14 does not have yet.
    -Wunguarded-availability)
find_program(BRIMLO_CLANG clang++-19 REQUIRED)
foreach(language CXX OBJCXX)
    set(CMAKE_${language}_COMPILER ${BRIMLO_CLANG})
    set(CMAKE_${language}_COMPILER_TARGET ${BRIMLO_MAC_ARCH}-apple-macos14.0)
    set(CMAKE_${language}_FLAGS_INIT "${flags}")
endforeach()
# The version makes clang speak to the linker in the words of today.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-mlinker-version=1000 --ld-path=/usr/bin/ld64.lld-19")
find_program(CMAKE_AR llvm-ar-19 REQUIRED)
find_program(CMAKE_RANLIB llvm-ranlib-19 REQUIRED)
find_program(CMAKE_INSTALL_NAME_TOOL llvm-install-name-tool-19 REQUIRED)

# Only what is in the folder: /usr holds another system's.
set(CMAKE_FIND_ROOT_PATH ${BRIMLO_MAC_SDK}/packages)
set(CMAKE_PREFIX_PATH /)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
foreach(package boost_json CLI11 GTest TBB)
    set(${package}_DIR ${CMAKE_CURRENT_LIST_DIR}/packages)
endforeach()

# The tests can't be asked here for their cases.
set(CMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE PRE_TEST)
