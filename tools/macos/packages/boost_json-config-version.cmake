set(PACKAGE_VERSION_COMPATIBLE TRUE)  # tools/install-deps sees to that.
