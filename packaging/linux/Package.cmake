# The Debian package, which `cpack` makes in the build folder.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME brimlo)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The Brimlo authors <maintainers@brimlo.app>")
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"see what fills the disk, and what of it can safely go
Brimlo knows the caches, logs, build output and downloads of hundreds of
tools, says what each of them is for and how it comes back, and moves what
you choose to the Trash. A journal remembers where everything was, so that
any item can be put back exactly there.

It also shows a folder by size as a list or a treemap, finds large files and
duplicates, and takes rules of your own. Every item passes a safety gate that
no setting widens.

This package holds the application and the command line tool, brimlo.")

# What is linked is found by dpkg-shlibdeps. The modules that the screens import are not linked, so
# they come from the list of what the application is built with.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS pkexec)
if(BRIMLO_BUILD_APP)
    set_property(DIRECTORY APPEND PROPERTY
        CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tools/install-deps)
    file(READ ${CMAKE_SOURCE_DIR}/tools/install-deps needs)
    string(REGEX MATCHALL "(qml6-module|fonts)-[a-z-]+" needs "${needs}")
    list(REMOVE_DUPLICATES needs)
    list(JOIN needs ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
    list(APPEND CPACK_DEBIAN_PACKAGE_RECOMMENDS qt6-wayland)
    list(JOIN CPACK_DEBIAN_PACKAGE_RECOMMENDS ", " CPACK_DEBIAN_PACKAGE_RECOMMENDS)
endif()
include(CPack)
