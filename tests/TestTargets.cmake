# What all test programs share: settings, precompiled headers, and how they become tests.

include(GoogleTest)

# The time to build test code matters, not its own speed: no optimisation, and of debug information the lines alone but
# where the build is made for the debugger.
add_library(invhw_test_settings INTERFACE)
target_compile_options(invhw_test_settings INTERFACE -O0 $<$<NOT:$<CONFIG:Debug>>:-g1>)
target_link_libraries(invhw_test_settings INTERFACE invhw_settings)
foreach(framework gtest gtest_main)
    target_compile_options(${framework} PRIVATE -O0 $<$<NOT:$<CONFIG:Debug>>:-g1>)
endforeach()

# The headers that nearly every test includes, compiled once; tests name what they use all the same, which the lint shows
# by a build without. Programs are compiled as position-independent executables, and so are the headers.
file(CONFIGURE OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/headers.cpp" CONTENT "")
add_library(test_headers OBJECT "${CMAKE_CURRENT_BINARY_DIR}/headers.cpp")
set_target_properties(test_headers PROPERTIES POSITION_INDEPENDENT_CODE OFF)
target_compile_options(test_headers PRIVATE -fPIE)
target_link_libraries(test_headers PRIVATE invhw_test_settings GTest::gtest)
target_precompile_headers(test_headers PRIVATE
    <gtest/gtest.h> <algorithm> <cstdio> <cstdlib> <cstring> <filesystem> <fstream> <functional> <map> <memory> <set>
    <sstream> <string> <unistd.h> <vector>
    "${CMAKE_CURRENT_LIST_DIR}/unit/Capture.h" "${CMAKE_CURRENT_LIST_DIR}/fakemachine/FakeMachine.h")

# Tests are there twice: "single", one by one, each in a process of its own, and "whole", all tests of a program in one
# process, which under sanitizers saves the time that a process takes to start. A test preset chooses one of the two.
function(invhw_whole_test name)
    add_test(NAME whole.${name} COMMAND ${name} --gtest_brief=1)
    set_tests_properties(whole.${name} PROPERTIES LABELS whole)
endfunction()

# invhw_test_program(NAME PREFIX SOURCE...): a GoogleTest program, whose single tests are PREFIX.<test>.
function(invhw_test_program name prefix)
    add_executable(${name} ${ARGN})
    target_link_libraries(${name} PRIVATE invhw_test_settings GTest::gtest_main)
    target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}")
    target_precompile_headers(${name} REUSE_FROM test_headers)
    gtest_discover_tests(${name} TEST_PREFIX "${prefix}." DISCOVERY_TIMEOUT 60 PROPERTIES LABELS single)
    invhw_whole_test(${name})
endfunction()
