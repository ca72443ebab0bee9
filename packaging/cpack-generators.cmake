# The archive is one tree that runs from any folder; the Debian packages install below /usr, one for each component.
if(CPACK_GENERATOR STREQUAL "TGZ")
    set(CPACK_PACKAGING_INSTALL_PREFIX "/")
    set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY ON)
endif()
