#pragma once

#include <cstdio>
#include <memory>

struct FileCloser {
    void operator()(FILE* file) const { fclose(file); }
};

using FileOwner = std::unique_ptr<FILE, FileCloser>;

/// Opens a regular file for reading; null for anything else: a pipe would keep its reader waiting.
FileOwner openRegularFile(const char* path);
