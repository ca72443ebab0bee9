#include "linux/system/ReleaseFile.h"

#include <cctype>
#include <cstring>

std::string readReleaseName(TextStream& file)
{
    char text[255];
    const size_t length = fread(text, 1, sizeof text - 1, file.get());
    text[length] = '\0';
    std::string name;
    bool inControlRun = false;
    for (const char* c = text; *c != '\0'; ++c) {
        const bool control = iscntrl(static_cast<unsigned char>(*c)) != 0;
        if (!control)
            name += *c;
        else if (!inControlRun)
            name += ' ';
        inControlRun = control;
    }
    return name;
}
