# Included into the project's build by mutate.py: what makes a mutant's build quick and changes no result.

# Run when the targets are there.
function(invhw_quick)
    foreach(target invhw_com invhw_smbios invhw_linux invhw_codeset invhw_scanner)
        target_precompile_headers(${target} PRIVATE
            <algorithm> <array> <cstddef> <cstdint> <cstdio> <cstdlib> <cstring> <ctime> <iterator> <memory> <optional>
            <string> <string_view> <utility> <vector>)
    endforeach()
    # Its tests convert every character of every code set.
    target_compile_options(invhw_codeset PRIVATE -O1)
endfunction()
cmake_language(DEFER CALL invhw_quick)
