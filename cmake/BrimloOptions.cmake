# Compile settings shared by every target; link BrimloOptions privately.
option(BRIMLO_COVERAGE "Instrument for gcov" OFF)
set(BRIMLO_SANITIZE "" CACHE STRING "Value for -fsanitize")

add_library(BrimloOptions INTERFACE)
target_include_directories(BrimloOptions INTERFACE ${CMAKE_SOURCE_DIR}/Sources)
target_compile_options(BrimloOptions INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wnon-virtual-dtor -Wold-style-cast)
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    # A designated initializer that leaves out defaulted fields is the house's way to build a value.
    # The stable sort of libstdc++ 12 calls what that library itself calls deprecated.
    # Its -Wconversion holds more than gcc's, and the embedded rule packs are long texts.
    target_compile_options(BrimloOptions INTERFACE
        -Wno-missing-designated-field-initializers -Wno-deprecated-declarations
        -Wno-sign-conversion -Wno-overlength-strings -fconstexpr-steps=100000000)
else()
    # With -O3 gcc 12 sees overflows in the library's own string code that can't happen.
    target_compile_options(BrimloOptions INTERFACE
        -Wno-missing-field-initializers -Wno-stringop-overflow -Wno-stringop-overread
        -Wno-restrict -Wno-array-bounds)
endif()
if(BRIMLO_SANITIZE)
    target_compile_options(BrimloOptions INTERFACE
        -fsanitize=${BRIMLO_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    # Reports show lines, no variables; the rest would take a tenth of the build.
    target_compile_options(BrimloOptions INTERFACE -g1)
    target_link_options(BrimloOptions INTERFACE -fsanitize=${BRIMLO_SANITIZE})
endif()
if(BRIMLO_COVERAGE)
    target_compile_options(BrimloOptions INTERFACE --coverage)
    target_link_options(BrimloOptions INTERFACE --coverage)
endif()

# What ships is hardened, every object of it, those that Qt's tools generate included. Not with a
# sanitizer: it checks the same calls itself. tools/check-hardening reads the result.
if(CMAKE_BUILD_TYPE MATCHES "^(Release|RelWithDebInfo)$" AND CMAKE_SYSTEM_NAME STREQUAL "Linux"
        AND NOT BRIMLO_SANITIZE)
    # Libraries like programs, which all of them become a part of: CMake's own property would compile
    # them with -fPIC, and programs could not use their precompiled headers.
    add_compile_options(-fPIE)
    add_link_options(-pie)
    # Undefined first: a distribution's own flags may hold a lower level.
    add_compile_options(-U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3
        -fstack-protector-strong -fstack-clash-protection)
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|i.86)$")
        add_compile_options(-fcf-protection)
    endif()
    add_link_options(LINKER:-z,relro,-z,now)
endif()
