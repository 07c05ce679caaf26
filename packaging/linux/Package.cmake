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
set(CPACK_DEBIAN_TOOL_PACKAGE_NAME brimlo)
set(CPACK_DEBIAN_APPLICATION_PACKAGE_NAME brimlo-app)

set(what
"see what fills the disk, and what of it can safely go
Brimlo knows the caches, logs, build output and downloads of hundreds of
tools, says what each of them is for and how it comes back, and moves what
you choose to the Trash. A journal remembers where everything was, so that
any item can be put back exactly there.

It also shows a folder by size, finds large files and duplicates, and takes
rules of your own. Every item passes a safety gate that no setting widens.
")
set(CPACK_DEBIAN_TOOL_DESCRIPTION "${what}
This package holds the command line tool, which needs no desktop.")
set(CPACK_DEBIAN_APPLICATION_DESCRIPTION "${what}
This package holds the application.")

# What is linked is found by dpkg-shlibdeps. The modules that the screens import are not linked, so
# they come from the list of what the application is built with.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL tool)
if(BRIMLO_BUILD_APP)
    list(APPEND CPACK_COMPONENTS_ALL application)
    set_property(DIRECTORY APPEND PROPERTY
        CMAKE_CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/tools/install-deps)
    file(READ ${CMAKE_SOURCE_DIR}/tools/install-deps needs)
    string(REGEX MATCHALL "(qml6-module|fonts)-[a-z-]+" needs "${needs}")
    list(REMOVE_DUPLICATES needs)
    list(JOIN needs ", " needs)
    set(CPACK_DEBIAN_APPLICATION_PACKAGE_DEPENDS "brimlo (= ${PROJECT_VERSION}), ${needs}")
    # The window asks the portal for the desktop's own dialogs of files.
    set(CPACK_DEBIAN_APPLICATION_PACKAGE_RECOMMENDS "pkexec, qt6-wayland, xdg-desktop-portal")
endif()
include(CPack)
