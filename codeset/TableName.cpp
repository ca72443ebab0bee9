#include "codeset/TableName.h"

#include <clocale>
#include <cstdio>
#include <cstring>
#include <langinfo.h>
#include <string>

#include "codeset/FileOwner.h"
#include "codeset/TableFolder.h"
#include "codeset/kst.h"

namespace
{

constexpr char kAliases[] = "aliases";

// Not toupper: a Turkish locale would turn "i" into another letter.
std::string upperCase(const char* text)
{
    std::string upper(text);
    for (char& c : upper)
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    return upper;
}

std::string localeCodeSet()
{
    setlocale(LC_ALL, "");
    const char* name = nl_langinfo(CODESET);
    return upperCase(*name != '\0' ? name : "ISO88591");
}

std::string lettersAndDigits(const std::string& text)
{
    std::string kept;
    for (const char c : text)
        if ((c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9'))
            kept += c;
    return kept;
}

FileOwner openBelow(const char* dir, const char* subFolder)
{
    const std::string folder = folderBelow(dir, subFolder, kAliases);
    return folder.empty() ? nullptr : openRegularFile((folder + kAliases).c_str());
}

FileOwner openAliases()
{
    if (FileOwner file = openBelow(kst_get_dir(), "/codeset/"))
        return file;
    if (FileOwner file = openBelow(kst_get_dir(), "/"))
        return file;
    return openRegularFile(kAliases);
}

// The replacement in one line of the aliases file, cut off in place; null when the line is not about name. A word that
// ends with the file may be half of one: it counts only with a character behind it.
const char* replacementIn(char* line, const char* name)
{
    static constexpr char kBlanks[] = " \t\r\n";
    if (*line == '#')
        return nullptr;
    char* const first = line + strspn(line, kBlanks);
    char* const firstEnd = first + strcspn(first, kBlanks);
    char* const second = firstEnd + strspn(firstEnd, kBlanks);
    char* const secondEnd = second + strcspn(second, kBlanks);
    if (second == secondEnd || *secondEnd == '\0')
        return nullptr;
    *firstEnd = '\0';
    *secondEnd = '\0';
    return strcmp(first, name) == 0 ? second : nullptr;
}

std::string resolveAlias(const std::string& name)
{
    const FileOwner file = openAliases();
    char line[128];
    while (file != nullptr && fgets(line, sizeof line, file.get()) != nullptr)
        if (const char* replacement = replacementIn(line, name.c_str()))
            return replacement;
    return name;
}

} // namespace

void get_table_name(const char* name, char* out, size_t size)
{
    std::string upper = upperCase(name);
    if (upper == "DOS" || upper == "WIN" || upper == "OS")
        upper = localeCodeSet();
    if (upper.compare(0, 3, "QRM") == 0)
        upper.erase(0, 3);
    snprintf(out, size, "%s", resolveAlias(lettersAndDigits(upper)).c_str());
}
