# What "cmake --install" puts in place beside the program and the libraries: the CMake package, the pkg-config file, the
# documents, the timer and the example.

include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/InvHW")
configure_package_config_file(cmake/InvHWConfig.cmake.in "${PROJECT_BINARY_DIR}/InvHWConfig.cmake"
    INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file("${PROJECT_BINARY_DIR}/InvHWConfigVersion.cmake" COMPATIBILITY SameMajorVersion)
install(EXPORT InvHWTargets NAMESPACE InvHW:: DESTINATION ${package_dir} COMPONENT dev)
install(FILES "${PROJECT_BINARY_DIR}/InvHWConfig.cmake" "${PROJECT_BINARY_DIR}/InvHWConfigVersion.cmake"
    DESTINATION ${package_dir} COMPONENT dev)

# The pkg-config file says where it is from the folder that it stands in, so that the tree may be installed, or moved, to
# any place.
file(RELATIVE_PATH INVHW_PREFIX_FROM_PC "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" /)
string(REGEX REPLACE "/$" "" INVHW_PREFIX_FROM_PC "${INVHW_PREFIX_FROM_PC}")
configure_file(cmake/invhw.pc.in "${PROJECT_BINARY_DIR}/invhw.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/invhw.pc" DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)
install(DIRECTORY examples/list-groups DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/libinvhw-dev/examples COMPONENT dev)

install(FILES README.md CHANGELOG.md docs/ARCHITECTURE.md docs/REPORT.md docs/CODESETS.md docs/SECURITY.md
    docs/invhw-report.xsd DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/invhw COMPONENT program)

# The timer's command finds the scanner beside itself: in the build's folder of programs, too.
configure_file(packaging/invhw-report "${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/invhw-report" COPYONLY)
install(PROGRAMS packaging/invhw-report DESTINATION ${INVHW_HOME_DIR}/bin COMPONENT program)
invhw_system_program(invhw-report)
install(FILES packaging/systemd/invhw.service packaging/systemd/invhw.timer
    DESTINATION lib/systemd/system COMPONENT program)
