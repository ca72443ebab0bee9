# Compares the committed documents with what PROGRAM makes in FOLDER.

file(MAKE_DIRECTORY "${FOLDER}")
execute_process(COMMAND "${PROGRAM}" "${FOLDER}" RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "${PROGRAM} ended with ${result}")
endif()
foreach(document REPORT.md invhw-report.xsd)
    execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files "${FOLDER}/${document}" "${COMMITTED}/${document}"
        RESULT_VARIABLE result)
    if(NOT result EQUAL 0)
        message(FATAL_ERROR "docs/${document} is out of date: build the target update_docs and commit the result")
    endif()
endforeach()
