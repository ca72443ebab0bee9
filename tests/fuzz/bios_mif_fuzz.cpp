// Any bytes as a MIF: every byte outside the date line is kept.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "linux/firmware/BiosMif.h"

static std::string changed(FILE* mif, const MifChange& change)
{
    char* text = nullptr;
    size_t length = 0;
    FILE* const out = open_memstream(&text, &length);
    if (!copyMifChanged(mif, out, change))
        abort();
    fclose(out);
    const std::string result(text, length);
    free(text);
    return result;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    FILE* const mif = fmemopen(const_cast<uint8_t*>(data), size, "rb");
    if (mif == nullptr)
        return 0;
    MifChange change;
    if (findMifChange(mif, "2004-07-15", &change)) {
        std::string expected(reinterpret_cast<const char*>(data), size);
        expected.replace(static_cast<size_t>(change.offset), change.oldLength, change.newLine);
        if (changed(mif, change) != expected)
            abort();
    }
    fclose(mif);
    return 0;
}
