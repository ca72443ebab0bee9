#include "linux/MemoryModulesGroup.h"

#include <gtest/gtest.h>
#include <sys/sysinfo.h>

TEST(TotalPhysMem, isTheKernelsFigureInUnitsOf1024)
{
    struct sysinfo info;
    ASSERT_EQ(sysinfo(&info), 0);
    EXPECT_EQ(totalPhysMemKB(), info.totalram / 1024);
}
