#pragma once

#include <cstdio>
#include <memory>

struct FileCloser {
    void operator()(FILE* file) const { fclose(file); }
};

using FileOwner = std::unique_ptr<FILE, FileCloser>;
