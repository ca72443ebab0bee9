# What all targets of the project share: warnings, include root, large files.

add_library(invhw_settings INTERFACE)
target_compile_options(invhw_settings INTERFACE
    -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wformat=2
    $<$<BOOL:$ENV{CI}>:-Werror>)
# A 32-bit program must see files, inodes and devices of any size.
target_compile_definitions(invhw_settings INTERFACE _FILE_OFFSET_BITS=64)

# invhw_library(NAME ALIAS [DEPENDENCY...]): one static library from every .cpp of the folder. Headers are included from
# the root of the sources ("com/VexTable.h").
function(invhw_library name alias)
    file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
    list(FILTER sources EXCLUDE REGEX "/tables/")
    add_library(${name} STATIC ${sources})
    add_library(${alias} ALIAS ${name})
    target_include_directories(${name} PUBLIC
        $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/invhw>)
    target_link_libraries(${name} PUBLIC ${ARGN} PRIVATE $<BUILD_INTERFACE:invhw_settings>)
endfunction()
