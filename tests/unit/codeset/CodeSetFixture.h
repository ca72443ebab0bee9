#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

#include "codeset/kst.h"

/// The folder of the test program, beside which the build puts the tables, as beside the program itself.
inline std::string programFolder()
{
    return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

inline std::string shippedTables()
{
    return programFolder() + "/../generic/codeset";
}

/// Runs in a folder of its own, which is also the current one, with the shipped tables and no other settings.
class CodeSetTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        char name[] = "/tmp/kst_test_XXXXXX";
        ASSERT_NE(mkdtemp(name), nullptr);
        folder = name;
        ASSERT_EQ(chdir(name), 0);
        setenv("BINDIR", programFolder().c_str(), 1);
        unsetenv("KSTDIR");
        unsetenv("KST_CODESET");
        setenv("LC_ALL", "C", 1);
    }

    void TearDown() override
    {
        kst_uninit();
        ASSERT_EQ(chdir("/"), 0);
        std::filesystem::remove_all(folder);
    }

    void write(const std::string& path, const std::string& contents) const
    {
        const std::filesystem::path whole = path[0] == '/' ? path : folder + "/" + path;
        std::filesystem::create_directories(whole.parent_path());
        std::ofstream(whole, std::ios::binary) << contents;
    }

    std::string folder;
};

/// Closes a handle at the end of the test.
struct Handle {
    explicit Handle(const char* name) : handle(kst_cs_new(name)) {}
    ~Handle() { kst_cs_free(handle); }
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    operator kst_handle() const { return handle; }
    kst_handle handle;
};

inline std::string toUtf8(kst_handle handle, const std::string& text)
{
    std::vector<char> out(text.size() * 4 + 8);
    const size_t length = kst_to_utf8(handle, text.data(), static_cast<long>(text.size()), out.data(), out.size());
    return std::string(out.data(), length);
}

inline std::string fromUtf8(kst_handle handle, const std::string& text)
{
    std::vector<char> out(text.size() * 5 + 8);
    const size_t length = kst_from_utf8(handle, text.data(), static_cast<long>(text.size()), out.data(), out.size());
    return std::string(out.data(), length);
}

inline std::u16string toUcs2(kst_handle handle, const std::string& text)
{
    std::vector<kst_wchar> out(text.size() * 4 + 8);
    const size_t length = kst_to_ucs2(handle, text.data(), static_cast<long>(text.size()), out.data(), out.size());
    return std::u16string(out.data(), length);
}

inline std::string fromUcs2(kst_handle handle, const std::u16string& text)
{
    std::vector<char> out(text.size() * 5 + 8);
    const size_t length = kst_from_ucs2(handle, text.data(), static_cast<long>(text.size()), out.data(), out.size());
    return std::string(out.data(), length);
}

/// The UTF-8 form of a code point.
inline std::string utf8(uint32_t c)
{
    const auto trail = [](uint32_t bits) { return static_cast<char>(0x80 | (bits & 0x3F)); };
    if (c < 0x80)
        return {static_cast<char>(c)};
    if (c < 0x800)
        return {static_cast<char>(0xC0 | c >> 6), trail(c)};
    if (c < 0x10000)
        return {static_cast<char>(0xE0 | c >> 12), trail(c >> 6), trail(c)};
    return {static_cast<char>(0xF0 | c >> 18), trail(c >> 12), trail(c >> 6), trail(c)};
}
