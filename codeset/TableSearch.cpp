#include "codeset/TableSearch.h"

#include <cstdlib>
#include <vector>

#include "codeset/CodeSet.h"
#include "codeset/FileOwner.h"
#include "codeset/TableName.h"
#include "codeset/kst.h"

static constexpr int kMaxRedirects = 5;
static constexpr size_t kMaxRedirectName = 32;

// Reads the whole file; false when it cannot be read or is larger than any table.
static bool readFile(const std::string& path, std::vector<unsigned char>& contents)
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
static std::string redirectName(const std::vector<unsigned char>& contents)
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

static std::shared_ptr<const CodeTable> loadBelow(const char* dir, const char* subDirectory, const std::string& name)
{
    if (dir == nullptr || *dir == '\0')
        return nullptr;
    const std::string path = std::string(dir) + subDirectory;
    return path.size() + name.size() < kPathLimit ? load_table(path, name) : nullptr;
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
