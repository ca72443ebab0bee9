#include "codeset/TableSearch.h"

#include <cstdlib>
#include <vector>

#include "codeset/CodeSet.h"
#include "codeset/FileOwner.h"
#include "codeset/TableFolder.h"
#include "codeset/kst.h"

namespace
{

constexpr int kMaxRedirects = 5;
constexpr size_t kMaxRedirectName = 32;

// Reads the whole file; false when it cannot be read or is larger than any table.
bool readFile(const std::string& path, std::vector<unsigned char>& contents)
{
    const FileOwner file = openRegularFile(path.c_str());
    if (file == nullptr)
        return false;
    unsigned char chunk[4096];
    contents.clear();
    while (const size_t count = fread(chunk, 1, sizeof chunk, file.get())) {
        if (contents.size() + count > TableLayout::kMaxSize)
            return false;
        contents.insert(contents.end(), chunk, chunk + count);
    }
    return ferror(file.get()) == 0;
}

// File names are in the code set of the operating system.
std::string redirectName(const std::vector<unsigned char>& contents)
{
    const size_t length = contents.size() < kMaxRedirectName ? contents.size() : kMaxRedirectName;
    char text[kMaxRedirectName];
    const size_t converted = kst_from_utf8(operatingSystemHandle(), reinterpret_cast<const char*>(contents.data()),
                                           static_cast<long>(length), text, sizeof text);
    std::string name;
    for (size_t i = 0; i < converted; ++i)
        if (static_cast<unsigned char>(text[i]) > ' ' && text[i] != '\x7F')
            name += text[i];
    return name;
}

std::shared_ptr<const CodeTable> loadBelow(const char* dir, const char* subFolder, const std::string& name)
{
    const std::string folder = folderBelow(dir, subFolder, name);
    return folder.empty() ? nullptr : load_table(folder, name);
}

} // namespace

std::shared_ptr<const CodeTable> load_table(const std::string& dir, const std::string& name)
{
    std::string current = name;
    for (int redirects = 0; redirects <= kMaxRedirects && !current.empty(); ++redirects) {
        std::vector<unsigned char> contents;
        if (dir.size() + current.size() > kPathLimit || !readFile(dir + current, contents))
            return nullptr;
        if (isTable(contents))
            return parseTable(std::move(contents));
        current = redirectName(contents);
    }
    return nullptr;
}

std::shared_ptr<const CodeTable> get_table(const std::string& name)
{
    if (auto table = loadBelow(kst_get_dir(), "/codeset/", name))
        return table;
    if (auto table = loadBelow(kst_get_dir(), "/", name))
        return table;
    if (auto table = loadBelow(getenv("BINDIR"), "/../generic/codeset/", name))
        return table;
    return load_table("", name);
}
