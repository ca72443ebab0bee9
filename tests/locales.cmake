# The locales of whole-scan tests, compiled into the build folder, where LOCPATH points to: name, definition, character map.

find_program(LOCALEDEF localedef REQUIRED)
add_custom_target(test_locales)

function(invhw_locale name definition charmap)
    set(folder "${PROJECT_BINARY_DIR}/locales")
    add_custom_command(
        OUTPUT "${folder}/${name}/LC_IDENTIFICATION"
        COMMAND ${CMAKE_COMMAND} -E make_directory "${folder}"
        COMMAND ${LOCALEDEF} --no-archive -i ${definition} -f ${charmap} "${folder}/${name}"
        COMMENT "Compiling the locale ${name}"
        VERBATIM)
    add_custom_target(test_locale_${name} DEPENDS "${folder}/${name}/LC_IDENTIFICATION")
    add_dependencies(test_locales test_locale_${name})
endfunction()

invhw_locale(de_DE.ISO-8859-1 de_DE ISO-8859-1)
invhw_locale(ja_JP.eucJP ja_JP EUC-JP)
invhw_locale(zh_CN.GB18030 zh_CN GB18030)
invhw_locale(en_US.UTF-8 en_US UTF-8)
