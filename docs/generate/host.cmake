# The documents that are made from the host catalog, and the tests that they are true.

add_executable(invhw_host_docs HostMain.cpp HostDoc.cpp HostSample.cpp HostSchema.cpp IdNames.cpp JsonSchema.cpp Markdown.cpp
    SchemaParts.cpp)
target_link_libraries(invhw_host_docs PRIVATE InvHW::report invhw_settings)

add_executable(invhw_ctl_man ManPage.cpp)
target_link_libraries(invhw_ctl_man PRIVATE InvHW::tool invhw_settings)

set(host_arguments -D "HOST_PROGRAM=$<TARGET_FILE:invhw_host_docs>" -D "MAN_PROGRAM=$<TARGET_FILE:invhw_ctl_man>"
    -D "SOURCES=${PROJECT_SOURCE_DIR}")

add_custom_target(update_docs
    COMMAND invhw_docs "${PROJECT_SOURCE_DIR}/docs"
    COMMAND invhw_host_docs "${PROJECT_SOURCE_DIR}/docs" "${PROJECT_SOURCE_DIR}"
    COMMAND invhw_ctl_man "${PROJECT_SOURCE_DIR}/docs/invhwctl.1"
    COMMENT "Writing docs/REPORT.md, the schemas and the manual page" VERBATIM)

# What the schema of the JSON form accepts and rejects; skipped where Python has no validator.
add_test(NAME schema.json COMMAND python3 "${CMAKE_CURRENT_SOURCE_DIR}/json_schema_test.py"
    "${PROJECT_SOURCE_DIR}/docs/invhw-report.schema.json" "$<TARGET_FILE:invhw_host_docs>" "${CMAKE_CURRENT_SOURCE_DIR}")
set_tests_properties(schema.json PROPERTIES SKIP_RETURN_CODE 77)

find_program(XMLLINT xmllint)
if(XMLLINT)
    set(validate_host "${XMLLINT}" --noout --schema "${PROJECT_SOURCE_DIR}/docs/invhw-host.xsd")
    add_test(NAME schema.host.accepts.every-group COMMAND sh -c "\"$0\" --sample xml | \"$@\" -"
        "$<TARGET_FILE:invhw_host_docs>" ${validate_host})
    add_test(NAME schema.host.accepts.short COMMAND ${validate_host} "${CMAKE_CURRENT_SOURCE_DIR}/accepted/host.xml")
    file(GLOB reports CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/rejected-host/*.xml")
    foreach(report ${reports})
        get_filename_component(name "${report}" NAME_WE)
        add_test(NAME schema.host.rejects.${name} COMMAND ${validate_host} "${report}")
        set_tests_properties(schema.host.rejects.${name} PROPERTIES PASS_REGULAR_EXPRESSION "fails to validate")
    endforeach()
endif()

# The manual page is one that a formatter takes without a word.
find_program(MAN man)
if(MAN)
    add_test(NAME docs.manPage COMMAND sh -c "! \"$0\" --warnings -l \"$1\" 2>&1 >/dev/null | grep ." "${MAN}"
        "${PROJECT_SOURCE_DIR}/docs/invhwctl.1")
endif()
