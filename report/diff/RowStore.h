#pragma once

#include <cstdint>
#include <string>

#include "report/Report.h"

namespace report
{
/// Rows that are read again later, one at a time: few stay in memory, many go to a temporary file. Sources are not
/// kept.
class RowStore
{
public:
    RowStore() = default;
    ~RowStore();
    RowStore(const RowStore&) = delete;
    RowStore& operator=(const RowStore&) = delete;

    /// Keeps a row and returns its place. After a failure nothing more is kept.
    uint64_t add(const Row& row);
    /// The row of a place; its attributes are of the group that is given. Empty after a failure.
    Row row(uint64_t place, const Group* group);
    /// The error number of the temporary file, 0 while all is well.
    int error() const { return error_; }

private:
    void spill();
    bool read(uint64_t place, size_t length, std::string& bytes);
    bool readBlock(uint64_t place, size_t length);

    int descriptor_ = -1;
    int error_ = 0;
    uint64_t spilled_ = 0; // bytes in the file
    std::string tail_;     // bytes behind them
    uint64_t blockPlace_ = 0;
    std::string block_; // a piece of the file
};
} // namespace report
