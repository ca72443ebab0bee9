# What all targets of the project share: warnings, include root, large files, installation.

add_library(invhw_settings INTERFACE)
target_compile_options(invhw_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wformat=2
    $<$<BOOL:$ENV{CI}>:-Werror>)
# GCC 12 at -O3 takes an assigned std::string for one that overlaps itself (GCC bug 105651): the benchmarks' preset alone.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_BUILD_TYPE STREQUAL "Release")
    target_compile_options(invhw_settings INTERFACE -Wno-restrict)
endif()
# The scanner runs wherever it is started, with a small stack too (ulimit -s 128): what is large is allocated.
set(INVHW_FRAME_LIMIT -Wframe-larger-than=16384)
# A 32-bit program must see files, inodes and devices of any size.
target_compile_definitions(invhw_settings INTERFACE _FILE_OFFSET_BITS=64)

# The program lives in a folder of its own, because its code-set tables stand at a place relative to it
# (../generic/codeset); a link in the folder of system programs leads there.
set(INVHW_HOME_DIR "lib/invhw")

# invhw_system_program(NAME): the link in the folder of system programs to a program of the project's own folder.
function(invhw_system_program name)
    file(CREATE_LINK ../${INVHW_HOME_DIR}/bin/${name} "${PROJECT_BINARY_DIR}/${name}-link" SYMBOLIC)
    install(FILES "${PROJECT_BINARY_DIR}/${name}-link" DESTINATION ${CMAKE_INSTALL_SBINDIR} RENAME ${name}
        COMPONENT program)
endfunction()

# invhw_library(NAME ALIAS [DEPENDENCY...]): one static library from every .cpp of the folder. Headers are included from
# the root of the sources ("com/VexTable.h").
function(invhw_library name alias)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}" "*.cpp")
    list(FILTER sources EXCLUDE REGEX "^tables/")  # programs of the build, with sources of their own
    add_library(${name} STATIC ${sources})
    add_library(${alias} ALIAS ${name})
    target_include_directories(${name} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/invhw>)
    target_compile_options(${name} PRIVATE ${INVHW_FRAME_LIMIT})
    target_link_libraries(${name} PUBLIC ${ARGN} PRIVATE $<BUILD_INTERFACE:invhw_settings>)

    string(REPLACE "InvHW::" "" exportName ${alias})
    set_target_properties(${name} PROPERTIES EXPORT_NAME ${exportName})
    install(TARGETS ${name} EXPORT InvHWTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev)
    get_filename_component(folder "${CMAKE_CURRENT_SOURCE_DIR}" NAME)
    install(DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}/" DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/invhw/${folder}
        COMPONENT dev FILES_MATCHING PATTERN "*.h" PATTERN "catalog" EXCLUDE PATTERN "tables" EXCLUDE)
endfunction()
