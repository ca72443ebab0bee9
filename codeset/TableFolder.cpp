#include "codeset/TableFolder.h"

std::string folderBelow(const char* dir, const char* subFolder, const std::string& name)
{
    if (dir == nullptr || *dir == '\0')
        return "";
    std::string folder = std::string(dir) + subFolder;
    return folder.size() + name.size() < kPathLimit ? folder : "";
}
