#pragma once

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "com/VexAttribIds.h"
#include "com/VexTable.h"
#include "linux/partition/PartitionRows.h"
#include "tests/unit/TableText.h"

/// A Partition table under construction and its rows.
class PartitionRowsTest : public testing::Test
{
protected:
    PartitionRowsTest() { beginPartitionRows(&table); }

    std::vector<VexTableRow*> rows()
    {
        std::vector<VexTableRow*> result;
        table.reset();
        while (VexTableRow* row = table.getNext())
            result.push_back(row);
        return result;
    }

    VexTable table{GROUP_PARTITION, 1};
};
