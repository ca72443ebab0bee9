#pragma once

#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

/// A real tree of files in a folder of its own, which goes with it.
class Tree
{
public:
    Tree()
    {
        std::string folder = std::filesystem::temp_directory_path() / "invhw-tree-XXXXXX";
        if (mkdtemp(folder.data()) == nullptr || chmod(folder.c_str(), 0755) != 0)
            abort();
        folder_ = folder;
    }
    ~Tree()
    {
        std::error_code ignored; // a folder that nobody may enter stays
        std::filesystem::remove_all(folder_, ignored);
    }
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;

    const std::string& folder() const { return folder_; }
    std::string at(const std::string& path) const { return folder_ + path; }

    void file(const std::string& path, const std::string& content) const
    {
        makeParent(path);
        std::ofstream(at(path), std::ios::binary) << content;
    }
    void folder(const std::string& path) const { std::filesystem::create_directories(at(path)); }
    void link(const std::string& path, const std::string& target) const
    {
        makeParent(path);
        std::filesystem::create_symlink(target, at(path));
    }
    void fifo(const std::string& path) const
    {
        makeParent(path);
        if (mkfifo(at(path).c_str(), 0600) != 0)
            abort();
    }
    /// A file of so many bytes that takes no room.
    void sparse(const std::string& path, off_t size) const
    {
        file(path, "");
        if (truncate(at(path).c_str(), size) != 0)
            abort();
    }

private:
    void makeParent(const std::string& path) const
    {
        std::filesystem::create_directories(std::filesystem::path(at(path)).parent_path());
    }

    std::string folder_;
};
